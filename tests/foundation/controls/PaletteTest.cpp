#include "Palette.h"

#include <QTest>

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

Q_DECLARE_METATYPE(ColorScheme)

class PaletteTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyTextHasAContrastOfAtLeastFourAndAHalf_data()
    {
        QTest::addColumn<QColor>("text");
        QTest::addColumn<QColor>("ground");
        for (const ColorScheme scheme : { ColorScheme::Light, ColorScheme::Dark }) {
            const Palette& palette = paletteFor(scheme);
            const char* const name = scheme == ColorScheme::Light ? "light" : "dark";
            const std::pair<const char*, QColor> texts[] { { "text", palette.text },
                { "soft text", palette.softText }, { "accent text", palette.accentText },
                { "remark", palette.invalid } };
            const std::pair<const char*, QColor> grounds[] { { "page", palette.page },
                { "card", palette.card }, { "control", palette.controlFill } };
            for (const auto& [textName, text] : texts) {
                for (const auto& [groundName, ground] : grounds)
                    QTest::addRow("%s: %s on %s", name, textName, groundName) << text << ground;
            }
            QTest::addRow("%s: selected text", name) << QColor(Qt::white) << palette.on;
        }
        QTest::newRow("panel, top") << QColor(Qt::white) << panelPink();
        QTest::newRow("panel, bottom") << QColor(Qt::white) << panelRed();
    }

    void everyTextHasAContrastOfAtLeastFourAndAHalf()
    {
        QFETCH(const QColor, text);
        QFETCH(const QColor, ground);

        const double ratio = contrast(text, ground);

        QVERIFY2(ratio >= 4.5, qPrintable(QString::number(ratio)));
    }

    void theFocusRingHasAContrastOfAtLeastThree()
    {
        for (const ColorScheme scheme : { ColorScheme::Light, ColorScheme::Dark }) {
            const Palette& palette = paletteFor(scheme);
            QVERIFY(contrast(palette.focus, palette.page) >= 3.0);
            QVERIFY(contrast(palette.focus, palette.card) >= 3.0);
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
