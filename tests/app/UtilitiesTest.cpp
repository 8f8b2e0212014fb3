#include "Utilities.h"
#include "Appearance.h"
#include "UserSettings.h"

#include <QGuiApplication>
#include <QPalette>
#include <QTemporaryDir>
#include <QTest>

/// Its own configuration folder is set before anything asks for the user's.
class UtilitiesTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    Utilities m_utilities;

private Q_SLOTS:
    void initTestCase() { qputenv("XDG_CONFIG_HOME", m_folder.path().toLocal8Bit()); }

    void cleanup() { QGuiApplication::setPalette(QPalette()); }

    void beforeAnyWindowExistsNothingHappens()
    {
        QVERIFY(Appearance::connected().isEmpty());
        m_utilities.overrideDisplayMode();
    }

    void theStoredThemeIsForcedOnTheWindow_data()
    {
        QTest::addColumn<qint64>("theme");
        QTest::addColumn<InterfaceStyle>("style");
        QTest::newRow("0 follows the system") << qint64(0) << InterfaceStyle::Unspecified;
        QTest::newRow("1 is light") << qint64(1) << InterfaceStyle::Light;
        QTest::newRow("2 is dark") << qint64(2) << InterfaceStyle::Dark;
        QTest::newRow("3 follows the system") << qint64(3) << InterfaceStyle::Unspecified;
        QTest::newRow("-1 follows the system") << qint64(-1) << InterfaceStyle::Unspecified;
    }

    void theStoredThemeIsForcedOnTheWindow()
    {
        QFETCH(const qint64, theme);
        QFETCH(const InterfaceStyle, style);
        const Appearance window;
        UserSettings::shared().setTheme(theme);

        m_utilities.overrideDisplayMode();

        QCOMPARE(window.overrideStyle(), style);
    }

    void followingTheSystemAgainLeavesDarkMode()
    {
        const Appearance window;
        const ColorScheme system = window.colorScheme();
        UserSettings::shared().setTheme(2);
        m_utilities.overrideDisplayMode();
        QCOMPARE(window.colorScheme(), ColorScheme::Dark);

        UserSettings::shared().setTheme(0);
        m_utilities.overrideDisplayMode();

        QCOMPARE(window.colorScheme(), system);
    }

    void theDesktopsPaletteDecidesUnlessAStyleIsForced()
    {
        Appearance window;
        QPalette dark;
        dark.setColor(QPalette::Window, Qt::black);
        dark.setColor(QPalette::WindowText, Qt::white);

        QGuiApplication::setPalette(dark);
        QTRY_COMPARE(window.colorScheme(), ColorScheme::Dark);
        window.setOverrideStyle(InterfaceStyle::Light);
        QCOMPARE(window.colorScheme(), ColorScheme::Light);
    }

    void onlyTheFirstWindowIsRestyled()
    {
        const auto first = std::make_unique<Appearance>();
        const auto second = std::make_unique<Appearance>();
        UserSettings::shared().setTheme(2);

        m_utilities.overrideDisplayMode();

        QCOMPARE(first->overrideStyle(), InterfaceStyle::Dark);
        QCOMPARE(second->overrideStyle(), InterfaceStyle::Unspecified);
    }

    void aWindowThatBecameTheFirstIsRestyledByALaterCall()
    {
        auto first = std::make_unique<Appearance>();
        const auto second = std::make_unique<Appearance>();
        UserSettings::shared().setTheme(2);
        m_utilities.overrideDisplayMode();

        first.reset();
        m_utilities.overrideDisplayMode();

        QCOMPARE(second->overrideStyle(), InterfaceStyle::Dark);
    }

    void theHeldStyleIsDark() { QCOMPARE(m_utilities.userInterfaceStyle, ColorScheme::Dark); }
};

QTEST_MAIN(UtilitiesTest)
#include "UtilitiesTest.moc"
