#include "Palette.h"

#include <QTest>

#include <array>
#include <cmath>

namespace {

double channel(double value)
{
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

/// Relative luminance as WCAG 2.1 defines it.
double luminance(const QColor& color)
{
    return 0.2126 * channel(color.redF()) + 0.7152 * channel(color.greenF())
        + 0.0722 * channel(color.blueF());
}

/// Contrast ratio as WCAG 2.1 defines it: 1 to 21.
double contrast(const QColor& one, const QColor& other)
{
    const auto [darker, lighter] = std::minmax({ luminance(one), luminance(other) });
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace

namespace {

struct Look {
    const char* name;
    ColorScheme scheme;
    Contrast contrast;
};

constexpr std::array looks {
    Look { "light", ColorScheme::Light, Contrast::Normal },
    Look { "dark", ColorScheme::Dark, Contrast::Normal },
    Look { "light, high contrast", ColorScheme::Light, Contrast::High },
    Look { "dark, high contrast", ColorScheme::Dark, Contrast::High },
};

/// What is seen where a colour that lets some light through is laid over a ground.
QColor laidOver(const QColor& ground, const QColor& veil)
{
    const auto mixed
        = [&veil](float below, float above) { return below + (above - below) * veil.alphaF(); };
    return QColor::fromRgbF(mixed(ground.redF(), veil.redF()),
        mixed(ground.greenF(), veil.greenF()), mixed(ground.blueF(), veil.blueF()));
}

} // namespace

class PaletteTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyTextStandsOutFromItsGround_data()
    {
        QTest::addColumn<QColor>("text");
        QTest::addColumn<QColor>("ground");
        QTest::addColumn<double>("least");
        for (const Look& look : looks) {
            const Palette& palette = paletteFor(look.scheme, look.contrast);
            const double least = look.contrast == Contrast::High ? 7.0 : 4.5;
            const std::pair<const char*, QColor> texts[] { { "text", palette.text },
                { "soft text", palette.softText }, { "accent text", palette.accentText },
                { "remark", palette.invalid } };
            const std::pair<const char*, QColor> grounds[] { { "page", palette.page },
                { "card", palette.card }, { "control", palette.controlFill } };
            for (const auto& [textName, text] : texts) {
                for (const auto& [groundName, ground] : grounds) {
                    QTest::addRow("%s: %s on %s", look.name, textName, groundName)
                        << text << ground << least;
                }
            }
            const QColor white(Qt::white);
            QTest::addRow("%s: selected text", look.name) << white << palette.on << least;
            QTest::addRow("%s: icon on a knob", look.name)
                << palette.knobIcon << palette.knob << least;
            QTest::addRow("%s: panel, top", look.name)
                << white << panelPink(look.contrast) << least;
            QTest::addRow("%s: panel, bottom", look.name)
                << white << panelRed(look.contrast) << least;
        }
    }

    void everyTextStandsOutFromItsGround()
    {
        QFETCH(const QColor, text);
        QFETCH(const QColor, ground);
        QFETCH(const double, least);

        const double ratio = contrast(text, ground);

        QVERIFY2(ratio >= least, qPrintable(QString::number(ratio)));
    }

    void inHighContrastTextsStandOutFromWhatIsPointedAtAndPressedToo()
    {
        for (const Look& look : looks) {
            if (look.contrast == Contrast::Normal)
                continue;
            const Palette& palette = paletteFor(look.scheme, look.contrast);
            for (const QColor& veil : { palette.hovered, palette.pressed }) {
                const QColor ground = laidOver(palette.controlFill, veil);
                for (const QColor& text : { palette.text, palette.softText, palette.accentText })
                    QVERIFY2(contrast(text, ground) >= 7.0, qPrintable(ground.name()));
            }
        }
    }

    void theFocusRingStandsOut()
    {
        for (const Look& look : looks) {
            const Palette& palette = paletteFor(look.scheme, look.contrast);
            const double least = look.contrast == Contrast::High ? 4.5 : 3.0;
            QVERIFY2(contrast(palette.focus, palette.page) >= least, look.name);
            QVERIFY2(contrast(palette.focus, palette.card) >= least, look.name);
        }
    }

    void inHighContrastEveryEdgeStandsOut()
    {
        for (const ColorScheme scheme : { ColorScheme::Light, ColorScheme::Dark }) {
            const Palette& palette = paletteFor(scheme, Contrast::High);
            for (const QColor& edge : { palette.line, palette.controlBorder, palette.onBorder }) {
                QCOMPARE(edge.alpha(), 255);
                for (const QColor& ground : { palette.page, palette.card, palette.controlFill })
                    QVERIFY2(contrast(edge, ground) >= 3.0, qPrintable(edge.name()));
            }
        }
    }

    void inHighContrastTheGroundsAreBlackOrWhite()
    {
        for (const QColor& light : { paletteFor(ColorScheme::Light, Contrast::High).page,
                 paletteFor(ColorScheme::Light, Contrast::High).card })
            QCOMPARE(light, QColor(Qt::white));
        for (const QColor& dark : { paletteFor(ColorScheme::Dark, Contrast::High).page,
                 paletteFor(ColorScheme::Dark, Contrast::High).card })
            QCOMPARE(dark, QColor(Qt::black));
    }

    void withoutHighContrastFillsHaveNoEdge()
    {
        for (const ColorScheme scheme : { ColorScheme::Light, ColorScheme::Dark }) {
            QCOMPARE(paletteFor(scheme).controlBorder.alpha(), 0);
            QCOMPARE(paletteFor(scheme).onBorder, paletteFor(scheme).on);
        }
    }

    void contrastIsMeasuredAsDefined()
    {
        QCOMPARE(contrast(Qt::white, Qt::black), 21.0);
        QCOMPARE(contrast(Qt::white, Qt::white), 1.0);
    }
};

QTEST_GUILESS_MAIN(PaletteTest)
#include "PaletteTest.moc"
