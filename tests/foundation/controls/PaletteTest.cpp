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

QColor faded(QColor color, float opacity)
{
    color.setAlphaF(opacity);
    return color;
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
            QTest::addRow("%s: selected text, and what is switched on", look.name)
                << palette.onText << palette.on << least;
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

    void textsStandOutFromWhatIsPointedAtAndPressedToo_data()
    {
        QTest::addColumn<QColor>("text");
        QTest::addColumn<QColor>("ground");
        QTest::addColumn<double>("least");
        for (const Look& look : looks) {
            const Palette& palette = paletteFor(look.scheme, look.contrast);
            const double least = look.contrast == Contrast::High ? 7.0 : 4.5;
            const struct {
                const char* name;
                QColor text;
                QColor ground;
            } pairs[] {
                { "button on the page", palette.accentText, palette.page },
                { "title of the menu bar", palette.text, palette.page },
                { "row", palette.text, palette.card },
                { "button that is a row", palette.accentText, palette.card },
                { "detail of a row", palette.softText, palette.card },
                { "button of a dialog", palette.accentText, palette.controlFill },
                { "filled button", palette.text, palette.controlFill },
                { "button that deletes", palette.onText, palette.on },
            };
            for (const auto& [name, text, ground] : pairs) {
                QTest::addRow("%s: %s, pointed at", look.name, name)
                    << text << laidOver(ground, palette.hovered)
                    << (ground == palette.on ? 4.5 : least);
                QTest::addRow("%s: %s, pressed", look.name, name)
                    << text << laidOver(ground, palette.pressed)
                    << (ground == palette.on ? 4.5 : least);
            }
            QTest::addRow("%s: title of the menu bar, pointed at", look.name)
                << palette.softText << laidOver(palette.page, palette.hovered) << least;
        }
    }

    void textsStandOutFromWhatIsPointedAtAndPressedToo() { everyTextStandsOutFromItsGround(); }

    void whatIsDisabledCanStillBeRead_data()
    {
        QTest::addColumn<QColor>("text");
        QTest::addColumn<QColor>("ground");
        QTest::addColumn<QColor>("behind");
        for (const Look& look : looks) {
            const Palette& palette = paletteFor(look.scheme, look.contrast);
            QTest::addRow("%s: button on the page", look.name)
                << palette.accentText << palette.page << palette.page;
            QTest::addRow("%s: row", look.name)
                << palette.accentText << palette.card << palette.card;
            QTest::addRow("%s: detail of a row", look.name)
                << palette.softText << palette.card << palette.card;
            QTest::addRow("%s: filled button", look.name)
                << palette.text << palette.controlFill << palette.card;
            QTest::addRow("%s: button that deletes", look.name)
                << palette.onText << palette.on << palette.page;
        }
    }

    void whatIsDisabledCanStillBeRead()
    {
        QFETCH(QColor, text);
        QFETCH(QColor, ground);
        QFETCH(const QColor, behind);

        text.setAlphaF(static_cast<float>(disabledOpacity));
        ground.setAlphaF(static_cast<float>(disabledOpacity));
        const double ratio = contrast(laidOver(behind, text), laidOver(behind, ground));

        QVERIFY2(ratio >= 3.0, qPrintable(QString::number(ratio)));
        QVERIFY(disabledOpacity < 0.8); // or nobody sees that it is disabled
    }

    void whatTellsAControlOrItsStateStandsOut_data()
    {
        QTest::addColumn<QColor>("mark");
        QTest::addColumn<QColor>("ground");
        for (const Look& look : looks) {
            const Palette& palette = paletteFor(look.scheme, look.contrast);
            const struct {
                const char* name;
                QColor mark;
                QColor ground;
            } pairs[] {
                { "edge of a field, outwards", palette.controlEdge, palette.card },
                { "edge of a field, inwards", palette.controlEdge, palette.controlFill },
                { "edge of a track on the page", palette.controlEdge, palette.page },
                { "edge of what is switched on", palette.onBorder, palette.card },
                { "thumb on what is switched on", palette.thumb, palette.on },
                { "edge of a slider's thumb, on the card", palette.softText, palette.card },
                { "mark that is not set", palette.softText, palette.card },
                { "edge of what is refused", palette.invalid, palette.controlFill },
                { "icon of a segment, pressed", palette.softText,
                    laidOver(palette.controlFill, palette.pressed) },
                { "focus in a field", palette.focus, palette.controlFill },
                { "focus on a row that is pointed at", palette.focus,
                    laidOver(palette.card, palette.hovered) },
                { "focus on a row that is pressed", palette.focus,
                    laidOver(palette.card, palette.pressed) },
                { "focus on a chosen row", palette.focus,
                    laidOver(palette.controlFill, palette.hovered) },
                { "scroll bar", laidOver(palette.page, faded(palette.softText, 0.8F)),
                    palette.page },
            };
            for (const auto& [name, mark, ground] : pairs)
                QTest::addRow("%s: %s", look.name, name) << mark << ground;
        }
    }

    void whatTellsAControlOrItsStateStandsOut()
    {
        QFETCH(const QColor, mark);
        QFETCH(const QColor, ground);

        const double ratio = contrast(mark, ground);

        QVERIFY2(ratio >= 3.0, qPrintable(QString::number(ratio)));
    }

    void theThumbOfASwitchThatIsOffShowsWhereItIs()
    {
        for (const Look& look : looks) {
            const Palette& palette = paletteFor(look.scheme, look.contrast);
            const double byItself = contrast(palette.thumbOff, palette.controlFill);
            const double byItsEdge = contrast(palette.controlEdge, palette.controlFill);
            QVERIFY2(std::max(byItself, byItsEdge) >= 3.0, look.name);
        }
    }

    void thePanelsTextStandsOutAllTheWayDown()
    {
        for (const Look& look : looks) {
            const double least = look.contrast == Contrast::High ? 7.0 : 4.5;
            for (int part = 0; part <= 10; ++part) {
                const QColor bottom
                    = faded(panelRed(look.contrast), static_cast<float>(part) / 10.0F);
                const QColor ground = laidOver(panelPink(look.contrast), bottom);
                QVERIFY2(contrast(Qt::white, ground) >= least, look.name);
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
