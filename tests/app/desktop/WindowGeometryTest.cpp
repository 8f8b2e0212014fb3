#include "WindowGeometry.h"

#include <QTest>

namespace {

const QSize least(500, 800);
const QRect large(0, 0, 1920, 1080);
const QRect second(1920, 0, 1920, 1080);
const QMargins frame(1, 20, 1, 5);

WindowGeometry at(QPoint place, QSize size = { 600, 900 }, QMargins margins = {})
{
    return { .size = size, .place = place, .frame = margins };
}

} // namespace

class WindowGeometryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The text

    void whatIsWrittenIsRead_data()
    {
        QTest::addColumn<WindowGeometry>("geometry");
        QTest::newRow("with all") << WindowGeometry { { 600, 900 }, QPoint(30, 40), frame, true };
        QTest::newRow("left of the main screen") << at({ -700, -20 });
        QTest::newRow("without a place") << WindowGeometry { .size = { 540, 880 } };
    }

    void whatIsWrittenIsRead()
    {
        QFETCH(const WindowGeometry, geometry);

        QCOMPARE(windowGeometryFrom(textOf(geometry)), geometry);
    }

    void theTextIsReadable()
    {
        QCOMPARE(textOf({ { 600, 900 }, QPoint(30, 40), frame, true }),
            QByteArray("[Window]\nx=30\ny=40\nwidth=600\nheight=900\nframeLeft=1\nframeTop=20\n"
                       "frameRight=1\nframeBottom=5\nmaximized=true\n"));
    }

    void aTextWithoutAPossibleSizeSaysNothing_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("something else") << QByteArray("\x7f"
                                                      "ELF\0\1\2=\n==\n\n=",
            13);
        QTest::newRow("no height") << QByteArray("width=600\n");
        QTest::newRow("words") << QByteArray("width=wide\nheight=high\n");
        QTest::newRow("a fraction") << QByteArray("width=600.5\nheight=900\n");
        QTest::newRow("nothing") << QByteArray("width=0\nheight=900\n");
        QTest::newRow("negative") << QByteArray("width=600\nheight=-900\n");
        QTest::newRow("gigantic") << QByteArray("width=600\nheight=32768\n");
        QTest::newRow("no number of this machine")
            << QByteArray("width=99999999999999\nheight=9\n");
    }

    void aTextWithoutAPossibleSizeSaysNothing()
    {
        QFETCH(const QByteArray, text);

        QCOMPARE(windowGeometryFrom(text), std::optional<WindowGeometry>());
    }

    void whatElseIsNonsenseIsLeftOut_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("half a place") << QByteArray("x=5\n");
        QTest::newRow("a place beyond every screen") << QByteArray("x=5\ny=40000\n");
        QTest::newRow("a frame of words") << QByteArray("frameTop=thick\n");
        QTest::newRow("a negative frame") << QByteArray("frameLeft=-1\n");
        QTest::newRow("a gigantic frame") << QByteArray("frameRight=201\n");
        QTest::newRow("neither maximised nor not") << QByteArray("maximized=perhaps\n");
        QTest::newRow("what nobody knows") << QByteArray("colour=red\n[Other]\nnoise");
    }

    void whatElseIsNonsenseIsLeftOut()
    {
        QFETCH(const QByteArray, text);

        QCOMPARE(windowGeometryFrom("width = 600\nheight=900\r\n" + text),
            (WindowGeometry { .size = { 600, 900 } }));
    }

    // The rules

    void theWindowIsRestored_data()
    {
        QTest::addColumn<WindowGeometry>("before");
        QTest::addColumn<QList<QRect>>("screens");
        QTest::addColumn<QRect>("after");
        const QList<QRect> one { large };
        const QList<QRect> two { large, second };
        const QList<QRect> small { QRect(0, 30, 1280, 994) };

        QTest::newRow("as it was") << at({ 30, 40 }) << one << QRect(30, 40, 600, 900);
        QTest::newRow("on another screen") << at({ 2000, 10 }) << two << QRect(2000, 10, 600, 900);
        QTest::newRow("up to the corner") << at({ 1320, 180 }) << one << QRect(1320, 180, 600, 900);
        QTest::newRow("over the right edge")
            << at({ 1500, 10 }) << one << QRect(1320, 10, 600, 900);
        QTest::newRow("over the left edge") << at({ -100, 10 }) << one << QRect(0, 10, 600, 900);
        QTest::newRow("over the lower edge") << at({ 5, 900 }) << one << QRect(5, 180, 600, 900);
        QTest::newRow("over the upper edge") << at({ 5, -200 }) << one << QRect(5, 0, 600, 900);
        QTest::newRow("its frame at the edge")
            << at({ 0, 0 }, { 600, 900 }, frame) << one << QRect(1, 20, 600, 900);
        QTest::newRow("its frame at the lower edge")
            << at({ 1400, 300 }, { 600, 900 }, frame) << one << QRect(1319, 175, 600, 900);
        QTest::newRow("more on the second of two")
            << at({ 1700, 10 }) << two << QRect(1920, 10, 600, 900);
        QTest::newRow("more on the first of two")
            << at({ 1400, 10 }) << two << QRect(1320, 10, 600, 900);
        QTest::newRow("the screen is gone") << at({ 2400, 10 }) << one << QRect(660, 90, 600, 900);
        QTest::newRow("the screen is smaller")
            << at({ 900, 100 }, { 1500, 1000 }) << small << QRect(0, 30, 1280, 994);
        QTest::newRow("beside a panel") << at({ 10, 0 }) << small << QRect(10, 30, 600, 900);
        QTest::newRow("its frame needs room, too")
            << at({ 1, 20 }, { 1920, 1080 }, frame) << one << QRect(1, 20, 1918, 1055);
        QTest::newRow("smaller than it may be")
            << at({ 30, 40 }, { 100, 100 }) << one << QRect(QPoint(30, 40), least);
        QTest::newRow("on a screen that is too small")
            << at({ 90, 90 }, { 600, 900 }, frame) << QList<QRect> { QRect(10, 0, 480, 700) }
            << QRect(QPoint(11, 20), least);
    }

    void theWindowIsRestored()
    {
        QFETCH(const WindowGeometry, before);
        QFETCH(const QList<QRect>, screens);
        QFETCH(const QRect, after);

        const WindowGeometry geometry = restored(before, screens, least);

        QCOMPARE(QRect(geometry.place.value(), geometry.size), after);
    }

    void withoutAPlaceTheWindowFitsTheRoomiestScreen()
    {
        const WindowGeometry geometry = restored({ .size = { 30000, 900 } },
            { QRect(0, 0, 1280, 1024), large, QRect(0, 0, 800, 600) }, least);

        QVERIFY(!geometry.place);
        QCOMPARE(geometry.size, QSize(large.width(), 900));
    }

    void withoutAScreenThereIsNoPlace()
    {
        const WindowGeometry geometry = restored(at({ 30, 40 }), {}, least);

        QVERIFY(!geometry.place);
        QCOMPARE(geometry.size, QSize(600, 900));
    }

    void theWindowStaysMaximised()
    {
        WindowGeometry geometry = at({ 30, 40 });
        geometry.isMaximised = true;

        QCOMPARE(restored(geometry, { large }, least), geometry);
    }

    void whateverTheFileSaysTheWindowIsSeen()
    {
        const QList<QRect> screens { large, QRect(-1280, 0, 1280, 1024) };
        for (const int x : { -32767, -1281, -640, 0, 1919, 32767 }) {
            for (const int y : { -32767, -1, 540, 1079, 32767 }) {
                for (const int side : { 1, 900, 32767 }) {
                    for (const int margin : { 0, 200 }) {
                        const WindowGeometry geometry
                            = restored(at({ x, y }, { side, side }, QMargins() + margin), screens,
                                { 500, 600 });
                        const QRect seen
                            = QRect(geometry.place.value(), geometry.size) + geometry.frame;
                        QVERIFY(screens[0].contains(seen) || screens[1].contains(seen));
                    }
                }
            }
        }
    }
};

QTEST_GUILESS_MAIN(WindowGeometryTest)
#include "WindowGeometryTest.moc"
