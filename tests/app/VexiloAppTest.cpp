#include "VexiloApp.h"
#include "Appearance.h"
#include "UserSettings.h"
#include "WindowLoader.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Vexilo_AppPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_CalculatorPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_HistoryPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_SettingsPlugin)

/// The application as a whole, without a desktop: no portal answers here.
class VexiloAppTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    std::unique_ptr<WindowLoader> m_windowLoader;
    std::unique_ptr<VexiloApp> m_app;

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
