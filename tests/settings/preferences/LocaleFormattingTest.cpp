#include "Formatting.h"
#include "NumberFormatter.h"

#include <QTest>

namespace {

struct LocaleTable {
    const char* symbol;
    QStringList money; ///< 0, 100, 1234.5, -1.239
    QString number; ///< 1234567.891
    QString day; ///< 5 November 2023
};

// What ICU 72 has for each locale; blanks are as it writes them.
const QHash<QByteArray, LocaleTable> tables {
    { "en_US.UTF-8",
        { "$", { u"$0.00"_qs, u"$100.00"_qs, u"$1,234.50"_qs, u"-$1.24"_qs }, u"1,234,567.89"_qs,
            u"Sun 05 Nov 2023"_qs } },
    { "de_DE.UTF-8",
        { "€",
            { u"0,00\u00a0€"_qs, u"100,00\u00a0€"_qs, u"1.234,50\u00a0€"_qs, u"-1,24\u00a0€"_qs },
            u"1.234.567,89"_qs, u"So. 05 Nov. 2023"_qs } },
    { "fr_FR.UTF-8",
        { "€",
            { u"0,00\u00a0€"_qs, u"100,00\u00a0€"_qs, u"1\u202f234,50\u00a0€"_qs,
                u"-1,24\u00a0€"_qs },
            u"1\u202f234\u202f567,89"_qs, u"dim. 05 nov. 2023"_qs } },
    { "de_CH.UTF-8",
        { "CHF",
            { u"CHF\u00a00.00"_qs, u"CHF\u00a0100.00"_qs, u"CHF\u00a01’234.50"_qs, u"CHF-1.24"_qs },
            u"1’234’567.89"_qs, u"So. 05 Nov. 2023"_qs } },
    { "ja_JP.UTF-8",
        { "￥", { u"￥0"_qs, u"￥100"_qs, u"￥1,234.5"_qs, u"-￥1.24"_qs }, u"1,234,567.89"_qs,
            u"日 05 11月 2023"_qs } },
    { "en_IN.UTF-8",
        { "₹", { u"₹0.00"_qs, u"₹100.00"_qs, u"₹1,234.50"_qs, u"-₹1.24"_qs }, u"12,34,567.89"_qs,
            u"Sun 05 Nov 2023"_qs } },
    { "ar_EG.UTF-8",
        { "ج.م.\u200f",
            { u"\u200f٠٫٠٠\u00a0ج.م.\u200f"_qs, u"\u200f١٠٠٫٠٠\u00a0ج.م.\u200f"_qs,
                u"\u200f١٬٢٣٤٫٥٠\u00a0ج.م.\u200f"_qs, u"\u061c-\u200f١٫٢٤\u00a0ج.م.\u200f"_qs },
            u"١٬٢٣٤٬٥٦٧٫٨٩"_qs, u"الأحد ٠٥ نوفمبر ٢٠٢٣"_qs } },
    { "fa_IR.UTF-8",
        { "ریال",
            { u"\u200eریال\u00a0۰"_qs, u"\u200eریال\u00a0۱۰۰"_qs, u"\u200eریال\u00a0۱٬۲۳۴٫۵"_qs,
                u"\u200e−\u200eریال\u00a0۱٫۲۴"_qs },
            u"۱٬۲۳۴٬۵۶۷٫۸۹"_qs, u"یکشنبه ۱۴ آبان ۱۴۰۲"_qs } },
    { "ar_KW.UTF-8",
        { "د.ك.\u200f",
            { u"\u200f٠٫٠٠\u00a0د.ك.\u200f"_qs, u"\u200f١٠٠٫٠٠\u00a0د.ك.\u200f"_qs,
                u"\u200f١٬٢٣٤٫٥٠\u00a0د.ك.\u200f"_qs, u"\u061c-\u200f١٫٢٤\u00a0د.ك.\u200f"_qs },
            u"١٬٢٣٤٬٥٦٧٫٨٩"_qs, u"الأحد ٠٥ نوفمبر ٢٠٢٣"_qs } },
    { "sv_SE.UTF-8",
        { "kr",
            { u"0,00\u00a0kr"_qs, u"100,00\u00a0kr"_qs, u"1\u00a0234,50\u00a0kr"_qs,
                u"−1,24\u00a0kr"_qs },
            u"1\u00a0234\u00a0567,89"_qs, u"sön 05 nov. 2023"_qs } },
    { "eo.UTF-8",
        { "$",
            { u"$\u00a00,00"_qs, u"$\u00a0100,00"_qs, u"$\u00a01\u00a0234,50"_qs,
                u"-$\u00a01,24"_qs },
            u"1\u00a0234\u00a0567,89"_qs, u"di 05 nov 2023"_qs } },
};

} // namespace

/// Run once per locale, named by LC_ALL.
class LocaleFormattingTest : public QObject {
    Q_OBJECT

private:
    LocaleTable m_table {};

private Q_SLOTS:
    void initTestCase()
    {
        const QByteArray locale = qgetenv("LC_ALL");
        QVERIFY2(tables.contains(locale), locale.constData());
        m_table = tables.value(locale);
    }

    void moneyFollowsTheLocaleWithItsOwnGroupingMark()
    {
        QCOMPARE(formattedWithCurrency(0), m_table.money.at(0));
        QCOMPARE(formattedWithCurrency(100), m_table.money.at(1));
        QCOMPARE(formattedWithCurrency(1234.5), m_table.money.at(2));
        QCOMPARE(formattedWithCurrency(-1.239), m_table.money.at(3));
    }

    void theCurrencySymbolIsTheLocales()
    {
        QCOMPARE(currencySymbol(), QString::fromUtf8(m_table.symbol));
    }

    void plainAmountsAreTheSameTextInEveryLocale()
    {
        QCOMPARE(formattedWithSeparator(1234.5), QStringLiteral("1,234.5"));
        QCOMPARE(formattedWithSeparator(1234567.891), QStringLiteral("1,234,567.89"));
        QCOMPARE(formattedWithSeparator(100), QStringLiteral("100"));
        QCOMPARE(formattedWithSeparator(0), QStringLiteral("0"));
        QCOMPARE(formattedWithSeparator(-0.5), QStringLiteral("-0.5"));
    }

    void theBillFieldShowsTheLocalesNumbers()
    {
        QCOMPARE(textFromAmount(1234567.891), m_table.number);
    }

    void whatIsShownIsReadBack()
    {
        for (const double amount : { 0.0, 0.5, 12.5, 100.0, 1234.5, 1234567.89 }) {
            QCOMPARE(amountFromText(textFromAmount(amount)), std::optional(amount));
            QCOMPARE(amountFromText(formattedWithCurrency(amount)), std::optional(amount));
        }
    }

    void aDecimalPointIsReadInEveryLocale()
    {
        QCOMPARE(amountFromText(QStringLiteral("12.50")), std::optional(12.5));
        QCOMPARE(amountFromText(QStringLiteral("$1,234.50")), std::optional(1234.5));
    }

    void wholeNumbersAreWrittenWithoutGrouping()
    {
        const QString text = numberFormatterInt().string(1234567);

        QCOMPARE(text.size(), 7);
        for (const QChar c : text)
            QVERIFY(c.isDigit());
    }

    void theDayIsWrittenInTheLocalesLanguageAndCalendar()
    {
        const QDateTime date(QDate(2023, 11, 5), QTime(19, 5));

        QCOMPARE(dateStr(date).remove(QChar(0x200c)), m_table.day);
    }

    void everyDayOfTenYearsSurvivesItsOwnText()
    {
        // A text that could not be read back would stop the process.
        for (QDate day(2018, 1, 1); day < QDate(2028, 1, 1); day = day.addDays(1))
            QVERIFY(!dateStr(QDateTime(day, QTime(23, 59))).isEmpty());
    }
};

QTEST_GUILESS_MAIN(LocaleFormattingTest)
#include "LocaleFormattingTest.moc"
