#include "VexiloApp.h"
#include "Appearance.h"
#include "FirstView.h"
#include "Icon.h"
#include "Layout.h"
#include "UserSettings.h"
#include "ViewModules.h"
#include "WindowLoader.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <vector>

namespace {

/// The fonts of the texts in the item that are seen.
QList<QFont> shownFonts(const QQuickItem& item)
{
    QList<QFont> fonts;
    for (const QQuickItem* const shown : shownIn(item)) {
        if (showsText(*shown))
            fonts.append(shown->property("font").value<QFont>());
    }
    return fonts;
}

/// The names of the icons in the item that are seen in their natural size.
QStringList shownIcons(const QQuickItem& item)
{
    QStringList names;
    for (const QQuickItem* const shown : shownIn(item)) {
        if (qobject_cast<const Icon*>(shown) && shown->size() == QSizeF(22, 22))
            names.append(shown->property("name").toString());
    }
    return names;
}

bool looksLike(const QFont& a, const QFont& b)
{
    return a.pixelSize() == b.pixelSize() && a.pointSizeF() == b.pointSizeF()
        && a.family() == b.family() && a.weight() == b.weight() && a.style() == b.style();
}

bool isAmong(const QFont& font, const QList<QFont>& fonts)
{
    return std::any_of(
        fonts.begin(), fonts.end(), [&font](const QFont& other) { return looksLike(font, other); });
}

} // namespace

/// The application as a whole, without a desktop: no portal answers here.
class VexiloAppTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    std::unique_ptr<WindowLoader> m_windowLoader;
    std::unique_ptr<VexiloApp> m_app;

    std::unique_ptr<QQuickWindow> otherWindow(WindowLoader& loader) const
    {
        const QWindow* const window = QGuiApplication::topLevelWindows().first();
        return loader.make({ { QStringLiteral("app"), QVariant::fromValue(m_app.get()) },
            { QStringLiteral("contentView"), window->property("contentView") } });
    }

    static InterfaceStyle styleOfWindow()
    {
        return Appearance::connected().first()->overrideStyle();
    }

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_CONFIG_HOME", m_folder.path().toLocal8Bit());
        qputenv("XDG_DATA_HOME", m_folder.path().toLocal8Bit());
        qputenv("XDG_STATE_HOME", m_folder.path().toLocal8Bit());
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
        m_windowLoader = std::make_unique<WindowLoader>();
        m_app = std::make_unique<VexiloApp>(*m_windowLoader);
        QVERIFY(m_app->start());
    }

    void cleanupTestCase()
    {
        m_app.reset();
        m_windowLoader.reset();
    }

    void oneWindowIsShownUnderTheProgramsName()
    {
        const QWindowList windows = QGuiApplication::topLevelWindows();

        QCOMPARE(windows.size(), 1);
        QTRY_VERIFY(windows.first()->isVisible());
        QCOMPARE(windows.first()->title(), QStringLiteral("Vexilo"));
        QCOMPARE(windows.first()->minimumSize(), QSize(500, 800));
    }

    void theKeyboardIsInTheBillFieldWhereTheStateSaysSo()
    {
        auto* const window
            = qobject_cast<QQuickWindow*>(QGuiApplication::topLevelWindows().first());
        QVERIFY(QTest::qWaitForWindowActive(window));
        auto* const view = window->property("contentView").value<QObject*>();
        QTRY_VERIFY(view->property("isTextFieldFocused").toBool());
        const QQuickItem* const field = window->activeFocusItem();
        QCOMPARE(field->property("name").toString(), QStringLiteral("Bill to Split"));

        QVERIFY(view->setProperty("isTextFieldFocused", false));
        QTRY_VERIFY(window->activeFocusItem() != field);

        QVERIFY(view->setProperty("isTextFieldFocused", true));
        QTRY_COMPARE(window->activeFocusItem(), field);
    }

    void theFontsOfTheFirstViewAreThoseThatAreLoadedBeforeIt()
    {
        const auto* const window
            = qobject_cast<QQuickWindow*>(QGuiApplication::topLevelWindows().first());
        QVERIFY(window);
        const QList<QFont> first = firstFonts();

        const QList<QFont> shown = shownFonts(*window->contentItem());

        QVERIFY(shown.size() > 10);
        for (const QFont& font : shown)
            QVERIFY2(isAmong(font, first), qPrintable(font.toString()));
        // The first one is that of controls, until they are told theirs.
        for (const QFont& font : first.mid(1))
            QVERIFY2(isAmong(font, shown), qPrintable(font.toString()));
    }

    void theIconsOfTheFirstViewAreThoseThatAreDrawnBeforeIt()
    {
        const auto* const window
            = qobject_cast<QQuickWindow*>(QGuiApplication::topLevelWindows().first());
        QVERIFY(window);
        QStringList first = firstIcons();
        QStringList shown = shownIcons(*window->contentItem());
        first.sort();
        shown.sort();

        QCOMPARE(shown, first);
    }

    void stepsArePreparedInOrderWhileTypesAreLoaded()
    {
        std::vector<int> taken;
        // Types may be loaded before the event loop has turned once, but not every time.
        for (int attempt = 0; attempt < 10 && taken.size() < 2; ++attempt) {
            taken.clear();
            WindowLoader loader;
            loader.prepare({ [&taken] { taken.push_back(1); }, [&taken] { taken.push_back(2); } });
            QVERIFY(otherWindow(loader));
        }
        QCOMPARE(taken, (std::vector { 1, 2 }));
    }

    void stepsAreLeftWhenTheTypesAreThere()
    {
        WindowLoader loader;
        const auto window = otherWindow(loader);
        QVERIFY(window);
        bool isTaken = false;

        loader.prepare({ [&isTaken] { isTaken = true; } });
        for (int turn = 0; turn < 10; ++turn)
            QCoreApplication::processEvents();

        QVERIFY(!isTaken);
    }

    void theWindowFollowsTheSystemAtAFirstLaunch()
    {
        QCOMPARE(styleOfWindow(), InterfaceStyle::Unspecified);
    }

    void aHeldKeyTurnsASwitchOnce()
    {
        QWindow* const window = QGuiApplication::topLevelWindows().first();
        QVERIFY(QTest::qWaitForWindowActive(window));
        // From the bill over the people and the service to the first switch.
        for (int stop = 0; stop < 4; ++stop)
            QTest::keyClick(window, Qt::Key_Tab);
        QVERIFY(!UserSettings::shared().tipFromEveryone());

        QTest::keyPress(window, Qt::Key_Return);
        QCOMPARE(UserSettings::shared().tipFromEveryone(), true);
        for (int repeat = 0; repeat < 3; ++repeat) {
            QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
            QCoreApplication::sendEvent(window, &held);
        }
        QTest::keyRelease(window, Qt::Key_Return);

        QCOMPARE(UserSettings::shared().tipFromEveryone(), true);
    }

    void aChangedThemeIsAppliedToTheOpenWindowAtOnce()
    {
        UserSettings::shared().setTheme(2);
        QTRY_COMPARE(styleOfWindow(), InterfaceStyle::Dark);

        UserSettings::shared().setTheme(1);
        QTRY_COMPARE(styleOfWindow(), InterfaceStyle::Light);

        UserSettings::shared().setTheme(0);
        QTRY_COMPARE(styleOfWindow(), InterfaceStyle::Unspecified);
    }
};

QTEST_MAIN(VexiloAppTest)
#include "VexiloAppTest.moc"
