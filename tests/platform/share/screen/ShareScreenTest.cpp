#include "FakeActivity.h"
#include "NoDesktop.h"
#include "RootViewController.h"
#include "UIActivityViewController.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QUrl>
#include <QtQml/qqmlextensionplugin.h>
#include <QtQuickTest>

Q_IMPORT_QML_PLUGIN(Vexilo_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_SharePlugin)

/// A sheet of a text with an excerpt on a desktop without a bus, which is shown in the test's
/// window.
class World : public QObject {
    Q_OBJECT
    Q_PROPERTY(UIActivityViewController* controller READ controller NOTIFY controllerChanged)
    /// Of all sheets since the last `start`: the type, and whether it was completed, and the error.
    Q_PROPERTY(QStringList outcomes READ outcomes NOTIFY outcomesChanged)
    Q_PROPERTY(QString clipboard READ clipboard)
    Q_PROPERTY(QStringList performed READ performed)
    Q_PROPERTY(int stops READ stops)

public:
    using QObject::QObject;

    [[nodiscard]] UIActivityViewController* controller() const
    {
        return m_root ? m_root->presented() : nullptr;
    }
    [[nodiscard]] QStringList outcomes() const { return m_outcomes; }
    [[nodiscard]] QString clipboard() const { return QGuiApplication::clipboard()->text(); }
    [[nodiscard]] QStringList performed() const { return m_activity->performed; }
    [[nodiscard]] int stops() const { return m_activity->stops; }

    /// The item's window gets its root view controller, once.
    Q_INVOKABLE void start(QQuickItem* item)
    {
        m_outcomes.clear();
        if (m_root)
            return;
        m_root = new RootViewController(item->window());
        connect(m_root, &RootViewController::presentedChanged, this, &World::controllerChanged);
    }

    Q_INVOKABLE void present(const QString& text)
    {
        m_activity = std::make_shared<FakeActivity>(QStringLiteral("Own activity"));
        auto controller = std::make_unique<UIActivityViewController>(
            ActivityItems { { .text = text,
                .excerpt = ActivityItem::Excerpt { .title = QStringLiteral("Copy share"),
                    .text = QStringLiteral("$30.00") } } },
            Activities { m_activity });
        controller->setCompletionHandler(
            [this](const std::optional<ActivityType>& type, bool completed, const auto&,
                const std::optional<ActivityError>& error) {
                m_outcomes.append(type.value_or(QStringLiteral("none"))
                    + (completed ? QStringLiteral(" completed") : QString())
                    + (error ? QLatin1String(": ") + error->description : QString()));
                Q_EMIT outcomesChanged();
            });
        m_root->present(std::move(controller));
    }

    /// The application's own activity answers late.
    Q_INVOKABLE void offerOwnActivity() { m_activity->sayAvailable(); }
    /// The same, with a page of its own.
    Q_INVOKABLE void offerOwnActivityOnPage(const QUrl& page)
    {
        m_activity->setPage(page.toString());
        m_activity->sayAvailable();
    }
    Q_INVOKABLE void failOwnActivity(const QString& error)
    {
        m_activity->sayFinished({ .error = ActivityError { error } });
    }
    /// How many activities of the presented sheet's first group there are.
    Q_INVOKABLE [[nodiscard]] int countFirstGroup() const
    {
        return m_root->presented()->groups().first()->rowCount();
    }
    /// The first activity of the presented sheet, which goes on owning it.
    Q_INVOKABLE [[nodiscard]] Activity* firstActivity() const
    {
        const ActivityModel* const group = m_root->presented()->groups().first();
        auto* const activity
            = group->data(group->index(0), ActivityModel::ActivityRole).value<Activity*>();
        QQmlEngine::setObjectOwnership(activity, QQmlEngine::CppOwnership);
        return activity;
    }
    Q_INVOKABLE void dismiss() { m_root->dismiss(); }

Q_SIGNALS:
    void controllerChanged();
    void outcomesChanged();

private:
    QPointer<RootViewController> m_root;
    std::shared_ptr<FakeActivity> m_activity;
    QStringList m_outcomes;
};

class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void applicationAvailable() { useNoDesktop(QStringLiteral("/nowhere")); }
    /// Called for each test file, each with an engine and a window of its own.
    void qmlEngineAvailable(QQmlEngine* engine)
    {
        qmlRegisterSingletonInstance("ShareTest", 1, 0, "World", new World(engine));
    }
};

QUICK_TEST_MAIN_WITH_SETUP(share, Setup)
#include "ShareScreenTest.moc"
