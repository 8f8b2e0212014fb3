#include "ShownApp.h"

#include "Activity.h"
#include "Appearance.h"
#include "FakeDesktop.h"
#include "Item.h"
#include "UserSettings.h"
#include "VexiloApp.h"
#include "ViewModules.h"
#include "WindowLoader.h"

#include <QGuiApplication>
#include <QTest>
#include <QtQuickTest/quicktest.h>

namespace {

const QString desktopSpace = QStringLiteral("org.gnome.desktop.interface");
const QString textScaleKey = QStringLiteral("text-scaling-factor");

constexpr int usualHeight = 880;

} // namespace

QString longDescription()
{
    return QStringLiteral("A dinner whose description is longer than any row of the list");
}

ShownApp::ShownApp()
{
    qputenv("XDG_CONFIG_HOME", m_home.path().toLocal8Bit());
    qputenv("XDG_DATA_HOME", m_home.path().toLocal8Bit());
    qputenv("XDG_STATE_HOME", m_home.path().toLocal8Bit());
    qputenv("HOME", m_home.path().toLocal8Bit());
}

ShownApp::~ShownApp() = default;

void ShownApp::begin()
{
    QVERIFY(!m_bus.address().isEmpty());
    m_portal = std::make_unique<FakePortal>(m_bus.address(),
        DesktopSettings { { desktopSpace,
            { { QStringLiteral("enable-animations"), false }, { textScaleKey, 1.0 } } } });
    UserSettings& settings = UserSettings::shared();
    settings.setBill(133.5);
    settings.setPeople(4);
    settings.setService(2);
    settings.setTipFromEveryone(true);
    settings.setRoundTip(true);
    settings.setRoundShare(true);
    start(Qt::LeftToRight);
    addBills();
}

void ShownApp::end()
{
    m_app.reset();
    m_windowLoader.reset();
    m_portal.reset();
}

void ShownApp::start(Qt::LayoutDirection direction)
{
    m_app.reset();
    QGuiApplication::setLayoutDirection(direction);
    m_windowLoader = std::make_unique<WindowLoader>();
    m_app = std::make_unique<VexiloApp>(*m_windowLoader);
    QVERIFY(m_app->start());
    m_window = qobject_cast<QQuickWindow*>(QGuiApplication::topLevelWindows().first());
    QVERIFY(QTest::qWaitForWindowActive(m_window));
    QTRY_VERIFY(Appearance::connected().first()->reducedMotion());
    // Narrower than a desktop makes it, too.
    m_window->setMinimumSize({});
    m_view = m_window->property("contentView").value<ContentView*>();
    QVERIFY(m_view);
}

void ShownApp::addBills()
{
    for (const QString& description : { QStringLiteral("Lunch"), longDescription() }) {
        m_view->setBillDescription(description);
        m_view->saveThis();
    }
}

void ShownApp::rest() const
{
    // A layout may ask for another one.
    for (int turn = 0; turn < 3; ++turn) {
        QCoreApplication::processEvents();
        QVERIFY(QQuickTest::qWaitForPolish(m_window));
    }
}

void ShownApp::resize(int width) const
{
    m_window->resize(width, usualHeight);
    QTRY_COMPARE(m_window->contentItem()->width(), width);
    rest();
}

void ShownApp::scaleText(double scale)
{
    m_portal->announce(desktopSpace, textScaleKey, scale);
    QTRY_COMPARE(Appearance::connected().first()->textScale(), scale);
    rest();
}

QList<const QQuickItem*> ShownApp::layers() const
{
    QList<const QQuickItem*> layers;
    for (const QQuickItem* const layer : m_window->contentItem()->childItems()) {
        if (!layer->inherits("QQuickOverlay"))
            continue;
        for (const QQuickItem* const popup : layer->childItems()) {
            if (popup->inherits("QQuickPopupItem") && popup->isVisible())
                layers.append(popup);
        }
    }
    return layers;
}

const QQuickItem& ShownApp::top() const
{
    const QList<const QQuickItem*> over = layers();
    return over.isEmpty() ? *m_window->contentItem() : *over.last();
}

QList<Screen> ShownApp::screens()
{
    const auto flag = [this](const char* name) { return [this, name] { set(*m_view, name); }; };
    const auto inList = [this](const char* name) {
        return [this, name] {
            openList();
            set(*m_app->historyView(), name);
        };
    };
    return {
        { QStringLiteral("calculator"), 0, [] {} },
        { QStringLiteral("amount refused"), 0,
            [this] {
                m_view->billEdited(QStringLiteral("a lot"));
                QVERIFY(!m_view->billNotice().isEmpty());
            } },
        { QStringLiteral("menu"), 1, [this] { QTest::keyClick(m_window, Qt::Key_F10); } },
        { QStringLiteral("clear"), 1, flag("showClear") },
        { QStringLiteral("copied"), 1, flag("showCopied") },
        { QStringLiteral("save"), 1, [this] { m_view->save(); } },
        { QStringLiteral("save, too long"), 1,
            [this] {
                m_view->save();
                m_view->setBillDescription(QString(Item::longestRef + 1, QLatin1Char('x')));
                QVERIFY(!m_view->descriptionNotice().isEmpty());
            } },
        { QStringLiteral("save failed"), 1, flag("showSaveFailed") },
        { QStringLiteral("settings"), 1, flag("showSettings") },
        { QStringLiteral("list"), 1, [this] { openList(); } },
        { QStringLiteral("list, being edited"), 1, inList("isEditing") },
        { QStringLiteral("delete all"), 2, inList("promptToDelete") },
        { QStringLiteral("delete old"), 2, inList("promptToDeleteOld") },
        { QStringLiteral("page"), 1, [this] { openPage(); } },
        { QStringLiteral("rename"), 2,
            [this] {
                openPage();
                m_app->historyView()->askForDescription();
            } },
        { QStringLiteral("use"), 2,
            [this] {
                openPage();
                set(*m_app->historyView(), "showUseThisBill");
            } },
        { QStringLiteral("share"), 1, [this] { m_view->shareButton(); } },
        { QStringLiteral("code"), 1, [this] { openCode(); } },
    };
}

void ShownApp::set(QObject& view, const char* flag) { QVERIFY(view.setProperty(flag, true)); }

void ShownApp::openList() { set(*m_view, "showHistory"); }

void ShownApp::openPage()
{
    openList();
    m_app->historyView()->choose(0);
    QVERIFY(m_app->historyView()->detail());
}

void ShownApp::openCode()
{
    m_view->shareButton();
    for (ActivityModel* const group : m_app->activityViewController()->groups()) {
        for (int row = 0; row < group->rowCount(); ++row) {
            auto* const activity
                = group->index(row).data(ActivityModel::ActivityRole).value<Activity*>();
            if (!activity->page().isEmpty())
                return m_app->activityViewController()->choose(activity);
        }
    }
    QFAIL("Nothing has a page in the share sheet.");
}

void ShownApp::show(const Screen& screen)
{
    screen.open();
    rest();
    QVERIFY2(layers().size() == screen.layers, qPrintable(screen.name));
}

void ShownApp::close()
{
    m_view->billEditingFinished();
    while (&top() != m_window->contentItem()) {
        const QQuickItem* const before = &top();
        QTest::keyClick(m_window, Qt::Key_Escape);
        QTRY_VERIFY(&top() != before);
    }
}
