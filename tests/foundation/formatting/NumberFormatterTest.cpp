#include "NumberFormatter.h"

#include <QTest>

#include <limits>

using Style = NumberFormatter::Style;

namespace {

NumberFormatter formatter(const char* locale, Style style)
{
    NumberFormatter result(locale);
    result.setStyle(style);
    return result;
}

NumberFormatter twoDigits(const char* locale)
{
    NumberFormatter result = formatter(locale, Style::Decimal);
    result.setMaximumFractionDigits(2);
    return result;
}

} // namespace

class NumberFormatterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void thePlainStyleHasNeitherGroupingNorFractions()
    {
        QCOMPARE(formatter("en_US", Style::Plain).string(1234567.5), QStringLiteral("1234568"));
    }

    void theThirdFractionDigitIsRoundedHalfToEven_data()
    {
        QTest::addColumn<double>("number");
        QTest::addColumn<QString>("text");
        QTest::newRow("half to even, down") << 2.345 << QStringLiteral("2.34");
        QTest::newRow("half to even, up") << 2.355 << QStringLiteral("2.36");
        QTest::newRow("above half") << 2.3451 << QStringLiteral("2.35");
        QTest::newRow("no trailing zeros") << 12.5 << QStringLiteral("12.5");
        QTest::newRow("whole") << 12.0 << QStringLiteral("12");
        QTest::newRow("grouped") << 1234567.891 << QStringLiteral("1,234,567.89");
        QTest::newRow("negative") << -1234.5 << QStringLiteral("-1,234.5");
    }

    void theThirdFractionDigitIsRoundedHalfToEven()
    {
        QFETCH(const double, number);
        QFETCH(const QString, text);

        QCOMPARE(twoDigits("en_US").string(number), text);
    }

    void aStyleSetAfterTheGroupingMarkReplacesIt()
    {
        NumberFormatter markFirst("de_DE");
        markFirst.setGroupingSeparator(QStringLiteral(","));
        markFirst.setStyle(Style::Decimal);
        NumberFormatter styleFirst("de_DE");
        styleFirst.setStyle(Style::Decimal);
        styleFirst.setGroupingSeparator(QStringLiteral("'"));

        QCOMPARE(markFirst.string(1234.5), QStringLiteral("1.234,5"));
        QCOMPARE(styleFirst.string(1234.5), QStringLiteral("1'234,5"));
    }

    void aLowerMaximumOfFractionDigitsLowersTheMinimum()
    {
        NumberFormatter dinar = formatter("en_KW", Style::Currency);
        QCOMPARE(dinar.string(1.5), QStringLiteral("KWD\u00a01.500"));

        dinar.setMaximumFractionDigits(2);

        QCOMPARE(dinar.string(1.5), QStringLiteral("KWD\u00a01.50"));
    }

    void textsAreReadStrictly_data()
    {
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isNumber");
        QTest::addColumn<double>("number");
        const auto row = [](const char* locale, const char* text, std::optional<double> number) {
            QTest::addRow("%s: %s", locale, text) << QByteArray(locale) << QString::fromUtf8(text)
                                                  << number.has_value() << number.value_or(0.0);
        };
        row("en_US", "12.5", 12.5);
        row("en_US", "1,234.5", 1234.5);
        row("en_US", "1234.5", 1234.5);
        row("en_US", "-5", -5.0);
        row("en_US", ".5", 0.5);
        row("en_US", "1,23", std::nullopt);
        row("en_US", "1,2345", std::nullopt);
        row("en_US", "1E5", std::nullopt);
        row("en_US", "1e5", std::nullopt);
        row("en_US", " 5", std::nullopt);
        row("en_US", "5 ", std::nullopt);
        row("en_US", "5 kr", std::nullopt);
        row("en_US", "", std::nullopt);
        row("en_US", "∞", std::nullopt);
        row("en_US", "NaN", std::nullopt);
        row("en_US", "five", std::nullopt);
        row("de_DE", "1.234,5", 1234.5);
        row("de_DE", "12.50", std::nullopt);
        row("de_DE", "0.500", std::nullopt);
        row("en_US", "0,500", std::nullopt);
        row("ar_EG", "٠٬٥٠٠", std::nullopt);
        row("de_DE", "0,500", 0.5);
        row("fr_FR", "12.345", std::nullopt);
        row("ar_EG", "1,234", std::nullopt);
        row("de_CH", "1,234.5", std::nullopt);
        row("de_CH", "1’234.5", 1234.5);
        row("de_CH", "1'234.5", 1234.5);
        row("en_IN", "12,34,567.5", 1234567.5);
        row("ar_EG", "١٬٢٣٤٫٥", 1234.5);
        row("fa_IR", "۱٬۲۳۴٫۵", 1234.5);
    }

    void textsAreReadStrictly()
    {
        QFETCH(const QByteArray, locale);
        QFETCH(const QString, text);
        QFETCH(const bool, isNumber);
        QFETCH(const double, number);

        const std::optional<double> read = twoDigits(locale.constData()).number(text);

        QCOMPARE(read.has_value(), isNumber);
        if (isNumber)
            QCOMPARE(*read, number);
    }

    void whatTheFormatterWritesItReads_data()
    {
        QTest::addColumn<QByteArray>("locale");
        for (const char* locale : { "en_US", "de_DE", "fr_FR", "de_CH", "ja_JP", "en_IN", "ar_EG",
                 "fa_IR", "ar_KW", "sv_SE", "my_MM", "ne_NP" })
            QTest::newRow(locale) << QByteArray(locale);
    }

    void whatTheFormatterWritesItReads()
    {
        QFETCH(const QByteArray, locale);
        const NumberFormatter numbers = twoDigits(locale.constData());

        for (const double number : { 0.0, 0.01, 12.5, 999.99, 1000.0, 1234567.89, -0.5, -1234.5 })
            QCOMPARE(numbers.number(numbers.string(number)), std::optional(number));
    }

    void aRegionWithoutACurrencyHasTheDollarSign()
    {
        QCOMPARE(currencySymbolOf("eo"), QStringLiteral("$"));
        QCOMPARE(currencyCodeOf("eo"), QString());
        QCOMPARE(currencySymbolOf("en_001"), QStringLiteral("$"));
        QCOMPARE(formatter("en_001", Style::Currency).string(5.0), QStringLiteral("$5.00"));
    }

    void aRegionWithACurrencyHasItsSymbolAndCode()
    {
        QCOMPARE(currencySymbolOf("de_DE"), QStringLiteral("€"));
        QCOMPARE(currencyCodeOf("de_DE"), QStringLiteral("EUR"));
        QCOMPARE(currencySymbolOf("en_IN"), QStringLiteral("₹"));
    }
};

QTEST_GUILESS_MAIN(NumberFormatterTest)
#include "NumberFormatterTest.moc"
