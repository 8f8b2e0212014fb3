#include "HistoryFixture.h"
#include "HistoryView.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QQmlEngine>
#include <QTest>
#include <QWindow>
#include <QtQml/qqmlextensionplugin.h>
#include <QtQuickTest>

Q_IMPORT_QML_PLUGIN(Vexilo_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_HistoryPlugin)

/// The state of the screen over a store of its own, for tests that press its keys.
class World : public QObject {
    Q_OBJECT
    Q_PROPERTY(HistoryView* view READ view NOTIFY viewChanged)
    Q_PROPERTY(QStringList refs READ refs)
    Q_PROPERTY(double settingsBill READ settingsBill)

public:
    using QObject::QObject;

    [[nodiscard]] HistoryView* view() const { return m_view.get(); }
    [[nodiscard]] QStringList refs() const { return shownRefs(*m_view->items()); }
    [[nodiscard]] double settingsBill() const { return m_fixture->settings().bill(); }

    /// A new store with so many bills, called "1" and so on from the newest, and a new screen.
    Q_INVOKABLE void open(int bills)
    {
        close();
        m_fixture = std::make_unique<HistoryFixture>();
        QStringList names;
        for (int i = 1; i <= bills; ++i)
            names.append(QString::number(i));
        m_fixture->addBills(names);
        m_view = std::make_unique<HistoryView>(m_fixture->settings(), m_fixture->context());
        Q_EMIT viewChanged();
    }
    Q_INVOKABLE void close()
    {
        // What is bound to the screen's state hears that it goes before it does.
        const std::unique_ptr<HistoryView> previous = std::move(m_view);
        Q_EMIT viewChanged();
    }
    /// Presses a key and holds it until it has repeated three times.
    Q_INVOKABLE void hold(int key)
    {
        QWindow* const window = QGuiApplication::focusWindow();
        for (const bool isRepeat : { false, true, true, true }) {
            QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString(), isRepeat);
            QCoreApplication::sendEvent(window, &press);
        }
        QTest::keyRelease(window, static_cast<Qt::Key>(key));
    }
    /// A bill that is newer than all others.
    Q_INVOKABLE void addBill(const QString& ref) { (void)m_fixture->addBill(ref, pieDay(23)); }

Q_SIGNALS:
    void viewChanged();

private:
    std::unique_ptr<HistoryFixture> m_fixture;
    std::unique_ptr<HistoryView> m_view;
};

class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    /// Called for each test file, each with an engine of its own.
    void qmlEngineAvailable(QQmlEngine* engine)
    {
        qmlRegisterSingletonInstance("HistoryTest", 1, 0, "World", new World(engine));
    }
};

QUICK_TEST_MAIN_WITH_SETUP(history, Setup)
#include "HistoryScreenTest.moc"
