#include "DesktopWishes.h"
#include "Appearance.h"
#include "FakeDesktop.h"
#include "PrivateBus.h"
#include "Theme.h"

#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>

#include <limits>

namespace {

const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString gnome = QStringLiteral("org.gnome.desktop.interface");
const QString gnomeAccess = QStringLiteral("org.gnome.desktop.a11y.interface");
const QString contrastKey = QStringLiteral("contrast");
const QString highContrastKey = QStringLiteral("high-contrast");
const QString textScaleKey = QStringLiteral("text-scaling-factor");

DesktopSettings textScale(const QVariant& scale)
{
    return { { gnome, { { textScaleKey, scale } } } };
}

/// Waits for what the portal says; false where nothing came.
bool answered(const DesktopWishes& wishes)
{
    return wishes.known() || QSignalSpy(&wishes, &DesktopWishes::changed).wait();
}

} // namespace

/// The wishes, and the look that follows them, on a private bus with a portal made up for each
/// test.
class DesktopWishesTest : public QObject {
    Q_OBJECT

public:
    explicit DesktopWishesTest(QString address)
        : m_address(std::move(address))
    {
    }

private:
    const QString m_address;

    [[nodiscard]] std::unique_ptr<FakePortal> desktop(DesktopSettings settings) const
    {
        return std::make_unique<FakePortal>(m_address, std::move(settings));
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY(!m_address.isEmpty()); }

    void aDesktopWithoutAPortalWishesNothing()
    {
        const DesktopWishes wishes;
        QVERIFY(answered(wishes));

        QCOMPARE(wishes.contrast(), Contrast::Normal);
        QCOMPARE(wishes.textScale(), 1.0);
    }

    void theStateAtTheStartIsReadInOneCall()
    {
        const auto portal = desktop(
            { { appearance, { { QStringLiteral("color-scheme"), 1U }, { contrastKey, 1U } } },
                { gnome,
                    { { textScaleKey, 1.5 }, { QStringLiteral("enable-animations"), false } } },
                { gnomeAccess, { { highContrastKey, true } } } });

        const DesktopWishes wishes;
        QVERIFY(answered(wishes));

        QCOMPARE(portal->reads(), 1);
        QCOMPARE(wishes.colorScheme(), ColorScheme::Dark);
        QCOMPARE(wishes.contrast(), Contrast::High);
        QCOMPARE(wishes.textScale(), 1.5);
        QVERIFY(wishes.reducedMotion());
    }

    void eitherKeyAsksForHighContrast_data()
    {
        QTest::addColumn<uint>("preference");
        QTest::addColumn<bool>("gnomes");
        QTest::addColumn<Contrast>("contrast");
        QTest::newRow("neither") << 0U << false << Contrast::Normal;
        QTest::newRow("the common one") << 1U << false << Contrast::High;
        QTest::newRow("GNOME's") << 0U << true << Contrast::High;
        QTest::newRow("both") << 1U << true << Contrast::High;
        QTest::newRow("an unknown preference") << 2U << false << Contrast::Normal;
    }

    void eitherKeyAsksForHighContrast()
    {
        QFETCH(const uint, preference);
        QFETCH(const bool, gnomes);
        QFETCH(const Contrast, contrast);
        const auto portal = desktop({ { appearance, { { contrastKey, preference } } },
            { gnomeAccess, { { highContrastKey, gnomes } } } });

        const DesktopWishes wishes;
        QVERIFY(answered(wishes));

        QCOMPARE(wishes.contrast(), contrast);
    }

    void oneKeyThatIsTakenBackDoesNotHideTheOther()
    {
        const auto portal = desktop({ { appearance, { { contrastKey, 1U } } },
            { gnomeAccess, { { highContrastKey, true } } } });
        const DesktopWishes wishes;
        QVERIFY(answered(wishes));
        QSignalSpy changes(&wishes, &DesktopWishes::changed);

        portal->announce(gnomeAccess, highContrastKey, false);
        QTRY_COMPARE(changes.size(), 1);
        QCOMPARE(wishes.contrast(), Contrast::High);

        portal->announce(appearance, contrastKey, 0U);
        QTRY_COMPARE(wishes.contrast(), Contrast::Normal);
    }

    void onlyASaneTextScaleIsTaken_data()
    {
        QTest::addColumn<QVariant>("said");
        QTest::addColumn<double>("scale");
        QTest::newRow("larger") << QVariant(1.25) << 1.25;
        QTest::newRow("smaller") << QVariant(0.75) << 0.75;
        QTest::newRow("far too large") << QVariant(40.0) << 3.0;
        QTest::newRow("far too small") << QVariant(0.01) << 0.5;
        QTest::newRow("nothing") << QVariant(0.0) << 0.5;
        QTest::newRow("negative") << QVariant(-2.0) << 0.5;
        QTest::newRow("not finite") << QVariant(std::numeric_limits<double>::infinity()) << 1.0;
        QTest::newRow("not a number") << QVariant(std::numeric_limits<double>::quiet_NaN()) << 1.0;
        QTest::newRow("a word") << QVariant(QStringLiteral("large")) << 1.0;
    }

    void onlyASaneTextScaleIsTaken()
    {
        QFETCH(const QVariant, said);
        QFETCH(const double, scale);
        const auto portal = desktop(textScale(said));

        const DesktopWishes wishes;
        QVERIFY(answered(wishes));

        QCOMPARE(wishes.textScale(), scale);
    }

    void aChangeThatConcernsNobodyIsNotTold()
    {
        const auto portal = desktop({});
        const DesktopWishes wishes;
        QVERIFY(answered(wishes));
        QSignalSpy changes(&wishes, &DesktopWishes::changed);

        portal->announce(gnome, QStringLiteral("cursor-size"), 48);
        portal->announce(gnomeAccess, contrastKey, 1U);
        portal->announce(gnome, textScaleKey, 2.0);

        QTRY_COMPARE(wishes.textScale(), 2.0);
        QCOMPARE(changes.size(), 1);
        QCOMPARE(wishes.contrast(), Contrast::Normal);
    }

    void anAnswerThatChangesNothingIsOnlyMadeKnown()
    {
        const auto portal = desktop({});
        Appearance look;
        const QSignalSpy changes(&look, &Appearance::changed);
        QSignalSpy answers(&look, &Appearance::becameKnown);

        QVERIFY(answers.wait());
        look.setOverrideStyle(InterfaceStyle::Unspecified);

        QCOMPARE(answers.size(), 1);
        QCOMPARE(changes.size(), 0);
    }

    void anAnswerIsDrawnBeforeItIsMadeKnown()
    {
        const auto portal = desktop({ { appearance, { { QStringLiteral("color-scheme"), 1U } } } });
        const Appearance look;
        const QSignalSpy changes(&look, &Appearance::changed);
        qsizetype changesBefore = -1;
        QSignalSpy answers(&look, &Appearance::becameKnown);
        connect(&look, &Appearance::becameKnown, this, [&] { changesBefore = changes.size(); });

        QVERIFY(answers.wait());

        QCOMPARE(look.colorScheme(), ColorScheme::Dark);
        QCOMPARE(changesBefore, 1);
        QCOMPARE(changes.size(), 1);
    }

    void theWishForLessMotionIsFollowedAndTakenBack()
    {
        const auto portal = desktop({});
        const Theme theme;
        QCOMPARE(theme.motion(), 150);

        portal->announce(gnome, QStringLiteral("enable-animations"), false);
        QTRY_COMPARE(theme.motion(), 0);

        portal->announce(gnome, QStringLiteral("enable-animations"), true);
        QTRY_COMPARE(theme.motion(), 150);
    }

    void textsIconsAndListRowsGrowWithTheTextScale()
    {
        const auto portal = desktop({});
        const Theme theme;
        QCOMPARE(theme.textFontSize1(), fontSize1);
        QCOMPARE(theme.listRowHeight(), 56.0);

        portal->announce(gnome, textScaleKey, 2.0);

        QTRY_COMPARE(theme.textFontSize1(), 2 * fontSize1);
        QCOMPARE(theme.textFontSize2(), 2 * fontSize2);
        QCOMPARE(theme.textFontSize3(), 2 * fontSize3);
        QCOMPARE(theme.textBodyFontSize(), 30.0);
        QCOMPARE(theme.textSmallFontSize(), 28.0);
        QCOMPARE(theme.iconSize(), 33.0);
        QCOMPARE(theme.listRowHeight(), 112.0);
        QCOMPARE(theme.columnWidth(), 1280.0);
    }

    void everyTextScaleGivesWholePixelsAndRowsOfMultiplesOfEight()
    {
        const auto portal = desktop({});
        const Theme theme;
        QSignalSpy changes(&theme, &Theme::changed);
        for (int percent = 50; percent <= 300; percent += 7) {
            portal->announce(gnome, textScaleKey, percent / 100.0);
            QVERIFY(changes.wait());
            QCOMPARE(theme.textFontSize1(), std::round(fontSize1 * percent / 100.0));

            QCOMPARE(theme.textSmallFontSize(), std::round(theme.textSmallFontSize()));
            QCOMPARE(std::fmod(theme.listRowHeight(), 8.0), 0.0);
            QVERIFY(theme.listRowHeight() >= 56.0);
            QVERIFY(theme.listRowHeight() >= 2 * 1.25 * theme.textFontSize1());
            QVERIFY(theme.iconSize() >= 22.0 && theme.iconSize() <= 36.0);
            QVERIFY(theme.columnWidth() >= 640.0);
        }
    }

    void theLookFollowsTheWishForHighContrastAndBack()
    {
        const auto portal = desktop({ { appearance, { { QStringLiteral("color-scheme"), 1U } } } });
        const Theme theme;
        QTRY_VERIFY(theme.dark());
        const QColor page = theme.page();

        portal->announce(appearance, contrastKey, 1U);
        QTRY_VERIFY(theme.highContrast());
        QCOMPARE(theme.page(), QColor(Qt::black));
        QCOMPARE(theme.controlBorder(), QColor(Qt::white));

        portal->announce(appearance, contrastKey, 0U);
        QTRY_COMPARE(theme.page(), page);
        QVERIFY(!theme.highContrast());
    }

    void aForcedStyleKeepsTheWishForHighContrast()
    {
        const auto portal = desktop({ { appearance, { { contrastKey, 1U } } } });
        Appearance window;
        window.setOverrideStyle(InterfaceStyle::Light);
        QVERIFY(!window.known());

        QTRY_VERIFY(window.known());

        QCOMPARE(window.contrast(), Contrast::High);
        QCOMPARE(window.colorScheme(), ColorScheme::Light);
    }
};

int main(int argc, char* argv[])
{
    const PrivateBus bus;
    const QGuiApplication application(argc, argv);
    DesktopWishesTest test(bus.address());
    return QTest::qExec(&test, argc, argv);
}

#include "DesktopWishesTest.moc"
