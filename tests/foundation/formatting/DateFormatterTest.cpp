#include "DateFormatter.h"

#include <QTest>

class DateFormatterTest : public QObject {
    Q_OBJECT

private:
    const QDateTime m_date { QDate(2023, 11, 5), QTime(19, 5, 42) };

private Q_SLOTS:
    void thePatternIsWrittenInTheLocalesLanguage_data()
    {
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<QString>("text");
        QTest::newRow("en_US") << QByteArray("en_US") << QStringLiteral("Sun 05 Nov 2023");
        QTest::newRow("de_DE") << QByteArray("de_DE") << QStringLiteral("So. 05 Nov. 2023");
        QTest::newRow("fa_IR, Persian calendar")
            << QByteArray("fa_IR") << QStringLiteral("یکشنبه ۱۴ آبان ۱۴۰۲");
    }

    void thePatternIsWrittenInTheLocalesLanguage()
    {
        QFETCH(const QByteArray, locale);
        QFETCH(const QString, text);
        DateFormatter formatter(locale.toStdString());
        formatter.setPattern(QStringLiteral("EEE dd MMM yyyy"));

        QCOMPARE(formatter.string(m_date).replace(QChar(0x200c), QString()), text);
    }

    void theLocalesOwnStylesAreWritten_data()
    {
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<QString>("text");
        QTest::newRow("en_US") << QByteArray("en_US") << QStringLiteral("11/5/23, 7:05:42 PM");
        QTest::newRow("de_DE") << QByteArray("de_DE") << QStringLiteral("05.11.23, 19:05:42");
    }

    void theLocalesOwnStylesAreWritten()
    {
        QFETCH(const QByteArray, locale);
        QFETCH(const QString, text);
        DateFormatter formatter(locale.toStdString());
        formatter.setShortDateAndMediumTime();

        // Newer releases of ICU write a narrow blank before the half of the day.
        QCOMPARE(formatter.string(m_date).replace(QChar(0x202f), QLatin1Char(' ')), text);
    }

    void aDateIsReadBackAtItsMidnight()
    {
        DateFormatter formatter("en_US");
        formatter.setPattern(QStringLiteral("EEE dd MM yyyy"));

        QCOMPARE(formatter.date(formatter.string(m_date)), QDateTime(m_date.date(), QTime(0, 0)));
    }

    void aTextThatDoesNotFollowThePatternGivesNothing_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("words") << QStringLiteral("someday");
        QTest::newRow("more than a time") << QStringLiteral("19:05 o'clock");
    }

    void aTextThatDoesNotFollowThePatternGivesNothing()
    {
        QFETCH(const QString, text);
        DateFormatter formatter("en_US");
        formatter.setPattern(QStringLiteral("HH:mm"));

        QCOMPARE(formatter.date(text), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(DateFormatterTest)
#include "DateFormatterTest.moc"
