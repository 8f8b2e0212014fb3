#include "ByteCountFormatter.h"

#include <QTest>

#include <limits>

class ByteCountFormatterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void bytesAreShownInTheLargestFittingDecimalUnit_data()
    {
        QTest::addColumn<quint64>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << quint64(0) << QStringLiteral("0 bytes");
        QTest::newRow("one") << quint64(1) << QStringLiteral("1 byte");
        QTest::newRow("some") << quint64(999) << QStringLiteral("999 bytes");
        QTest::newRow("a thousand") << quint64(1000) << QStringLiteral("1.0 kB");
        QTest::newRow("1024 is no unit") << quint64(1024) << QStringLiteral("1.0 kB");
        QTest::newRow("half up") << quint64(1250) << QStringLiteral("1.3 kB");
        QTest::newRow("still kilobytes") << quint64(999949) << QStringLiteral("999.9 kB");
        QTest::newRow("rounded into megabytes") << quint64(999950) << QStringLiteral("1.0 MB");
        QTest::newRow("megabytes") << quint64(12345678) << QStringLiteral("12.3 MB");
        QTest::newRow("gigabytes") << quint64(4294967296) << QStringLiteral("4.3 GB");
        QTest::newRow("terabytes") << quint64(2000000000000) << QStringLiteral("2.0 TB");
        QTest::newRow("petabytes") << quint64(1000000000000000) << QStringLiteral("1.0 PB");
        QTest::newRow("all that 64 bits count")
            << std::numeric_limits<quint64>::max() << QStringLiteral("18,446.7 PB");
    }

    void bytesAreShownInTheLargestFittingDecimalUnit()
    {
        QFETCH(const quint64, bytes);
        QFETCH(const QString, text);

        // ICU may part number and unit by a blank that breaks no line.
        QCOMPARE(byteCountText(bytes, "en_US").replace(QChar::Nbsp, QLatin1Char(' ')), text);
    }

    void theLocaleWritesNumberAndUnit_data()
    {
        QTest::addColumn<std::string>("locale");
        QTest::addColumn<QString>("text");
        QTest::newRow("German") << std::string("de_DE") << QStringLiteral("1,5 kB");
        QTest::newRow("French") << std::string("fr_FR") << QStringLiteral("1,5 ko");
        QTest::newRow("Persian digits") << std::string("fa_IR") << QStringLiteral("۱٫۵ kB");
    }

    void theLocaleWritesNumberAndUnit()
    {
        QFETCH(const std::string, locale);
        QFETCH(const QString, text);

        QCOMPARE(byteCountText(1500, locale).simplified(), text);
    }
};

QTEST_APPLESS_MAIN(ByteCountFormatterTest)
#include "ByteCountFormatterTest.moc"
