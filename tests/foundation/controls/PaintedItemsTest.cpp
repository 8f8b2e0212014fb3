#include "FigureText.h"
#include "GradientPanel.h"
#include "Icon.h"

#include <QDir>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QTest>

namespace {

/// What the item paints in a size, in points, on a display of so many pixels for each.
QImage painted(QQuickPaintedItem& item, const QSizeF& size, double scale = 1.0)
{
    item.setSize(size);
    QImage image((size * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    item.paint(&painter);
    painter.end();
    return image;
}

/// The part of the image that something was drawn on.
QRect ink(const QImage& image)
{
    QRect bounds;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).alpha() > 0)
                bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

double widthOf(FigureText& item, const char* text)
{
    item.setProperty("text", QString::fromUtf8(text));
    return item.implicitWidth();
}

/// A panel, red above and blue below, in a white window.
class ShownPanel {
public:
    explicit ShownPanel(const QSize& size)
    {
        m_panel.setProperty("topColor", QColor(Qt::red));
        m_panel.setProperty("bottomColor", QColor(Qt::blue));
        m_panel.setProperty("outlineColor", QColor(Qt::black));
        m_panel.setProperty("radius", 16.0);
        m_panel.setParentItem(m_window.contentItem());
        m_panel.setSize(size);
        m_window.setColor(Qt::white);
        m_window.resize(400, 100);
    }

    GradientPanel& panel() { return m_panel; }
    void look() { m_image = m_window.grabWindow(); }

    /// The colour at a place that is told in points.
    [[nodiscard]] QColor at(double x, double y) const
    {
        const double scale = m_window.effectiveDevicePixelRatio();
        return m_image.pixelColor(static_cast<int>(x * scale), static_cast<int>(y * scale));
    }

private:
    QQuickWindow m_window;
    GradientPanel m_panel;
    QImage m_image;
};

QString iconFolder() { return QStringLiteral(":/qt-project.org/imports/Vexilo/Controls/icons"); }

} // namespace

class PaintedItemsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void amountsWithAsManyDigitsAreEquallyWide()
    {
        FigureText figure;
        QFont font(QStringLiteral("Inter"));
        font.setPixelSize(26);
        figure.setProperty("font", font);
        const QFontMetricsF metrics(font);
        QCOMPARE(QFontInfo(font).family(), QStringLiteral("Inter"));
        QVERIFY(metrics.horizontalAdvance(QLatin1Char('1'))
            < metrics.horizontalAdvance(QLatin1Char('8')));

        const double ones = widthOf(figure, "$111.11");

        QVERIFY(ones > 0.0);
        QCOMPARE(widthOf(figure, "$888.88"), ones);
        QCOMPARE(widthOf(figure, "$171.46"), ones);
        QVERIFY(widthOf(figure, "$1,111.11") > ones);
    }

    void digitsOfOtherScriptsAreTabularToo()
    {
        FigureText figure;

        QCOMPARE(widthOf(figure, "١١١"), widthOf(figure, "٨٥٦"));
    }

    void anAmountIsDrawnAtTheEndOfItsItem()
    {
        FigureText figure;
        const double natural = widthOf(figure, "$100.00");

        const QRect drawn = ink(painted(figure, { 3 * natural, 40 }));
        figure.setProperty("mirrored", true);
        const QRect mirrored = ink(painted(figure, { 3 * natural, 40 }));

        QVERIFY(drawn.left() >= 2 * natural - 2);
        QVERIFY(mirrored.right() <= natural + 2);
        QVERIFY(!mirrored.isEmpty());
    }

    void aNarrowItemDrawsTheWholeAmountSmaller()
    {
        FigureText figure;
        const double natural = widthOf(figure, "$1,234,567,890.00");

        const QRect drawn = ink(painted(figure, { natural / 2, 40 }));

        QVERIFY(drawn.width() > natural / 3);
        QVERIFY(drawn.left() >= 0);
        QVERIFY(drawn.right() < natural / 2);
    }

    void aRightToLeftAmountIsDrawnInsideItsItem()
    {
        FigureText figure;
        const double natural = widthOf(figure, "\u200f١٬٢٣٤٫٥٠\u00a0ج.م.\u200f");

        const QRect drawn = ink(painted(figure, { natural, 40 }));

        QVERIFY(drawn.width() > natural / 2);
    }

    void aPanelHasAGradientAnOutlineAndRoundCorners()
    {
        ShownPanel shown({ 300, 100 });
        shown.look();

        for (const double x : { 0.2, 299.5 }) {
            QCOMPARE(shown.at(x, 0.2), QColor(Qt::white));
            QCOMPARE(shown.at(x, 99.5), QColor(Qt::white));
            QVERIFY(shown.at(x, 50.0).lightness() < 64);
        }
        for (const double x : { 30.0, 150.0, 270.0 }) {
            QVERIFY(shown.at(x, 0.2).lightness() < 64);
            QVERIFY(shown.at(x, 99.5).lightness() < 64);
            QVERIFY(shown.at(x, 10.0).red() > 200);
            QVERIFY(shown.at(x, 90.0).blue() > 200);
            QCOMPARE(shown.at(x, 30.0), shown.at(150.0, 30.0));
        }
        QCOMPARE(shown.at(300.5, 50.0), QColor(Qt::white));
    }

    void aPanelFollowsItsColoursAndSize()
    {
        ShownPanel shown({ 300, 100 });
        shown.look();

        shown.panel().setProperty("topColor", QColor(Qt::green));
        shown.look();
        QVERIFY(shown.at(150.0, 10.0).green() > 200);

        shown.panel().setSize({ 200, 60 });
        shown.look();
        QCOMPARE(shown.at(210.0, 30.0), QColor(Qt::white));
        QVERIFY(shown.at(150.0, 55.0).blue() > 200);
        QVERIFY(shown.at(199.5, 30.0).lightness() < 64);
    }

    void aPanelNarrowerThanItsCornersIsDrawnWhole_data()
    {
        QTest::addColumn<int>("width");
        for (const int width : { 3, 4, 20, 34, 35, 36 })
            QTest::addRow("%d points", width) << width;
    }

    void aPanelNarrowerThanItsCornersIsDrawnWhole()
    {
        QFETCH(const int, width);
        ShownPanel shown({ width, 100 });
        shown.look();

        QVERIFY(shown.at(0.2, 50.0).lightness() < 64);
        QVERIFY(shown.at(width / 2.0, 50.0).red() > 64);
        QVERIFY(shown.at(width - 0.5, 50.0).lightness() < 64);
        QCOMPARE(shown.at(width + 0.5, 50.0), QColor(Qt::white));
    }

    void aPanelOfOnePointIsDrawn()
    {
        ShownPanel shown({ 1, 100 });
        shown.look();

        QVERIFY(shown.at(0.2, 50.0) != QColor(Qt::white));
    }

    void everyIconIsDrawnInItsColour()
    {
        const QStringList files = QDir(iconFolder()).entryList();
        QVERIFY(files.size() >= 13);
        for (const QString& file : files) {
            Icon icon;
            icon.setProperty("name", QString(file).remove(QStringLiteral(".svg")));
            icon.setProperty("color", QColor(Qt::red));

            const QImage image = painted(icon, { 48, 48 });

            const QRect drawn = ink(image);
            QVERIFY2(drawn.width() >= 20 || drawn.height() >= 20, qPrintable(file));
            bool solid = false;
            for (int y = 0; y < 48; ++y) {
                for (int x = 0; x < 48; ++x)
                    solid = solid || image.pixelColor(x, y) == QColor(Qt::red);
            }
            QVERIFY2(solid, qPrintable(file));
        }
    }

    void aMirroredIconIsTheOtherWayRound()
    {
        Icon icon;
        icon.setProperty("name", QStringLiteral("arrow.uturn.backward"));
        const QImage plain = painted(icon, { 48, 48 });
        icon.setProperty("mirrored", true);
        const QImage mirrored = painted(icon, { 48, 48 });

        QVERIFY(plain != mirrored);
        QCOMPARE(ink(mirrored).width(), ink(plain).width());
    }

    void anIconKeepsItsShapeWhateverItsColourWas()
    {
        Icon icon;
        icon.setProperty("name", QStringLiteral("trash"));
        icon.setProperty("color", QColor(Qt::red));
        const QImage red = painted(icon, { 48, 48 });
        icon.setProperty("color", QColor(0, 0, 255, 128));
        const QImage blue = painted(icon, { 48, 48 });
        icon.setProperty("color", QColor(Qt::red));

        QCOMPARE(painted(icon, { 48, 48 }), red);
        QCOMPARE(ink(blue), ink(red));
        QVERIFY(blue != red);
    }

    void anIconIsAsSharpAsItsDisplay_data()
    {
        QTest::addColumn<double>("scale");
        QTest::addColumn<int>("pixels");
        // The scene graph has a picture of whole pixels and paints it full: 27.5 become 28.
        QTest::addRow("125 per cent") << 28.0 / 22.0 << 28;
        QTest::addRow("150 per cent") << 1.5 << 33;
        QTest::addRow("200 per cent") << 2.0 << 44;
        QTest::addRow("225 per cent") << 50.0 / 22.0 << 50;
    }

    void anIconIsAsSharpAsItsDisplay()
    {
        QFETCH(const double, scale);
        QFETCH(const int, pixels);
        Icon icon;
        icon.setProperty("name", QStringLiteral("trash"));
        Icon::prepare(QStringLiteral("trash"), 1.0);
        const QImage large = painted(icon, QSizeF(pixels, pixels));

        QImage fine = painted(icon, { 22, 22 }, scale);
        fine.setDevicePixelRatio(1.0);

        QCOMPARE(fine, large);
    }

    void anIconWithoutAPixelDrawsNothing()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        Icon icon;
        icon.setProperty("name", QStringLiteral("trash"));
        icon.setSize({ 0.2, 22.0 });
        QImage image(22, 22, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);

        icon.paint(&painter);
        painter.end();

        QVERIFY(ink(image).isEmpty());
    }

    void anUnknownIconDrawsNothing()
    {
        Icon icon;
        icon.setProperty("name", QStringLiteral("no.such.icon"));

        QVERIFY(ink(painted(icon, { 48, 48 })).isEmpty());
    }
};

QTEST_MAIN(PaintedItemsTest)
#include "PaintedItemsTest.moc"
