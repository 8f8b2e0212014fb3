#include "QrCode.h"

#include <QTest>

#include <algorithm>

/// What the reader needs to find its way: the shape of the code. Its content is read back from the
/// screen's picture.
class QrCodeTest : public QObject {
    Q_OBJECT

private:
    /// Whether the square of seven modules with a light ring stands there.
    static bool hasFinder(const QrCode& code, int top, int left)
    {
        for (int row = 0; row < 7; ++row) {
            for (int column = 0; column < 7; ++column) {
                const int ring = std::min({ row, column, 6 - row, 6 - column });
                if (code.isDark(top + row, left + column) != (ring != 1))
                    return false;
            }
        }
        return true;
    }

private Q_SLOTS:
    void aCodeHasItsThreeFinders()
    {
        const auto code = QrCode::encode(QStringLiteral("Everyone pays $30.00"));

        QVERIFY(code);
        QVERIFY(hasFinder(*code, 0, 0));
        QVERIFY(hasFinder(*code, 0, code->side() - 7));
        QVERIFY(hasFinder(*code, code->side() - 7, 0));
        QVERIFY(!hasFinder(*code, code->side() - 7, code->side() - 7));
    }

    void theCodeGrowsWithTheText_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<int>("side");
        // The capacities of level M for bytes, at their edges.
        QTest::newRow("version 1") << 14 << 21;
        QTest::newRow("version 2") << 15 << 25;
        QTest::newRow("version 6") << 106 << 41;
        QTest::newRow("version 7") << 107 << 45;
        QTest::newRow("version 40") << 2331 << 177;
    }

    void theCodeGrowsWithTheText()
    {
        QFETCH(const int, length);
        QFETCH(const int, side);

        const auto code = QrCode::encode(QString(length, QLatin1Char('x')));

        QVERIFY(code);
        QCOMPARE(code->side(), side);
    }

    void whatFitsInNoCodeHasNone()
    {
        QVERIFY(!QrCode::encode(QString(2332, QLatin1Char('x'))));
        QVERIFY(!QrCode::encode(QString(1200, QChar(0x00E9)))); // two bytes each
        QVERIFY(!QrCode::encode(QString()));
    }
};

QTEST_APPLESS_MAIN(QrCodeTest)
#include "QrCodeTest.moc"
