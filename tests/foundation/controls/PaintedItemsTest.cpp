#include "FigureText.h"
#include "GradientPanel.h"
#include "Icon.h"

#include <QDir>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QQuickWindow>
#include <QTest>

namespace {

QImage painted(QQuickPaintedItem& item, const QSizeF& size)
{
    item.setSize(size);
    QImage image(size.toSize(), QImage::Format_ARGB32_Premultiplied);
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

/// The item in a white window.
QImage shown(QQuickItem& item, const QSize& size)
{
    QQuickWindow window;
    window.setColor(Qt::white);
    window.resize(size);
    item.setParentItem(window.contentItem());
    item.setSize(size);
    const QImage image = window.grabWindow();
    item.setParentItem(nullptr);
    return image;
}

QColor colorAt(const QImage& image, double x, double y)
{
    return image.pixelColor(static_cast<int>(x * (image.width() - 1)),
        static_cast<int>(y * (image.height() - 1)));
}

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
        GradientPanel panel;
        panel.setProperty("topColor", QColor(Qt::red));
        panel.setProperty("bottomColor", QColor(Qt::blue));
        panel.setProperty("outlineColor", QColor(Qt::black));
        panel.setProperty("radius", 16.0);

        const QImage image = shown(panel, { 300, 100 });

        for (const double x : { 0.0, 1.0 }) {
            QCOMPARE(colorAt(image, x, 0.0), QColor(Qt::white));
            QCOMPARE(colorAt(image, x, 1.0), QColor(Qt::white));
            QCOMPARE(colorAt(image, x, 0.5), QColor(Qt::black));
        }
        for (const double x : { 0.1, 0.5, 0.9 }) {
            QCOMPARE(colorAt(image, x, 0.0), QColor(Qt::black));
            QVERIFY(colorAt(image, x, 0.1).red() > 200);
            QVERIFY(colorAt(image, x, 0.9).blue() > 200);
            QCOMPARE(colorAt(image, x, 0.3), colorAt(image, 0.5, 0.3));
        }
    }

    void aPanelNarrowerThanItsCornersIsDrawn_data()
    {
        QTest::addColumn<int>("width");
        for (const int width : { 1, 2, 20, 34, 35, 36 })
            QTest::addRow("%d points", width) << width;
    }

    void aPanelNarrowerThanItsCornersIsDrawn()
    {
        QFETCH(int, width);
        GradientPanel panel;
        panel.setProperty("topColor", QColor(Qt::red));
        panel.setProperty("bottomColor", QColor(Qt::red));
        panel.setProperty("outlineColor", QColor(Qt::red));
        panel.setProperty("radius", 16.0);

        const QImage image = shown(panel, { width, 100 });

        QCOMPARE(colorAt(image, 0.5, 0.5), QColor(Qt::red));
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

    void anUnknownIconDrawsNothing()
    {
        Icon icon;
        icon.setProperty("name", QStringLiteral("no.such.icon"));

        QVERIFY(ink(painted(icon, { 48, 48 })).isEmpty());
    }
};

QTEST_MAIN(PaintedItemsTest)
#include "PaintedItemsTest.moc"
