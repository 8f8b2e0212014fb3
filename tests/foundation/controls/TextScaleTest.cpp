#include "TextScale.h"

#include <QTest>

/// Which part of the wish for larger texts is left to the program.
class TextScaleTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theRemainingTextScale_data()
    {
        QTest::addColumn<double>("wish");
        QTest::addColumn<QString>("platform");
        QTest::addColumn<double>("devicePixelRatio");
        QTest::addColumn<double>("remaining");
        const QString x11 = QStringLiteral("xcb");
        const QString wayland = QStringLiteral("wayland");
        QTest::newRow("no wish") << 1.0 << x11 << 1.0 << 1.0;
        QTest::newRow("a plain screen") << 1.5 << x11 << 1.0 << 1.5;
        QTest::newRow("in the resolution") << 1.5 << x11 << 1.5 << 1.0;
        QTest::newRow("in the resolution of a dense screen") << 1.25 << x11 << 2.5 << 1.0;
        QTest::newRow("in the resolution, cut to whole dots") << 1.1 << x11 << 105.0 / 96 << 1.0;
        QTest::newRow("in the resolution, rounded up") << 1.1 << x11 << 106.0 / 96 << 1.0;
        QTest::newRow("smaller, in the resolution") << 0.75 << x11 << 0.75 << 1.0;
        QTest::newRow("smaller, a plain screen") << 0.5 << x11 << 1.0 << 0.5;
        QTest::newRow("a dense screen alone") << 1.25 << x11 << 2.0 << 1.25;
        QTest::newRow("a screen scaled by a fraction alone") << 1.25 << x11 << 1.5 << 1.25;
        QTest::newRow("a screen less dense than the wish") << 2.0 << x11 << 1.5 << 2.0;
        QTest::newRow("a dense screen without a wish") << 1.0 << x11 << 2.0 << 1.0;
        QTest::newRow("another window system") << 1.5 << wayland << 1.5 << 1.5;
        QTest::newRow("another window system, dense") << 1.25 << wayland << 2.5 << 1.25;
    }

    void theRemainingTextScale()
    {
        QFETCH(const double, wish);
        QFETCH(const QString, platform);
        QFETCH(const double, devicePixelRatio);
        QFETCH(const double, remaining);

        QCOMPARE(remainingTextScale(wish, platform, devicePixelRatio), remaining);
    }
};

QTEST_GUILESS_MAIN(TextScaleTest)
#include "TextScaleTest.moc"
