#include "VexiloApp.h"
#include "Appearance.h"
#include "UserSettings.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Vexilo_AppPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_CalculatorPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_ControlsPlugin)

/// The application as a whole, without a desktop: no portal answers here.
class VexiloAppTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    std::unique_ptr<VexiloApp> m_app;

    static InterfaceStyle styleOfWindow()
    {
        return Appearance::connected().first()->overrideStyle();
    }

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_CONFIG_HOME", m_folder.path().toLocal8Bit());
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
        m_app = std::make_unique<VexiloApp>();
        QVERIFY(m_app->start());
    }

    void cleanupTestCase() { m_app.reset(); }

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
