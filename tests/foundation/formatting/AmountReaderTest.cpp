#include "AmountReader.h"

#include "NumberFormatter.h"

#include <QTest>

#include <cmath>

namespace {

std::optional<double> read(const QByteArray& locale, const QString& text)
{
    NumberFormatter formatter(locale.toStdString());
    formatter.setStyle(NumberFormatter::Style::Decimal);
    formatter.setMaximumFractionDigits(2);
    return readAmount(text, formatter,
        { currencySymbolOf(locale.toStdString()), currencyCodeOf(locale.toStdString()) });
}

void row(const char* locale, const char* text, std::optional<double> amount)
{
    QTest::addRow("%s: '%s'", locale, text) << QByteArray(locale) << QString::fromUtf8(text)
                                            << amount.has_value() << amount.value_or(0.0);
}

} // namespace

class AmountReaderTest : public QObject {
    Q_OBJECT

private:
    void addColumns()
    {
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isAmount");
        QTest::addColumn<double>("amount");
    }

    void compareWithRow()
    {
        QFETCH(const QByteArray, locale);
        QFETCH(const QString, text);
        QFETCH(const bool, isAmount);
        QFETCH(const double, amount);

        const std::optional<double> result = read(locale, text);

        QCOMPARE(result.has_value(), isAmount);
        if (isAmount)
            QCOMPARE(*result, amount);
    }

private Q_SLOTS:
    void theLocalesOwnNotationIsRead_data()
    {
        addColumns();
        row("en_US", "1,234.5", 1234.5);
        row("de_DE", "1.234,5", 1234.5);
        row("de_DE", "1.234", 1234.0);
        row("fr_FR", "1\u202f234,5", 1234.5);
        row("de_CH", "1’234.5", 1234.5);
        row("en_IN", "12,34,567.89", 1234567.89);
        row("ar_EG", "١٬٢٣٤٫٥", 1234.5);
        row("fa_IR", "۱۲٫۵", 12.5);
        row("sv_SE", "\u22125", -5.0);
    }
    void theLocalesOwnNotationIsRead() { compareWithRow(); }

    void aLonePointOrCommaBeforeTheLastTwoDigitsIsTheDecimalMark_data()
    {
        addColumns();
        row("de_DE", "12.50", 12.5);
        row("de_DE", "12.5", 12.5);
        row("de_DE", ".5", 0.5);
        row("de_DE", "1234.50", 1234.5);
        row("en_US", "12,50", 12.5);
        row("en_US", "12,5", 12.5);
        row("en_US", ",5", 0.5);
        row("fr_FR", "12.50", 12.5);
        row("ar_EG", "12.50", 12.5);
        row("ar_EG", "١٢.٥٠", 12.5);
        row("fa_IR", "12.5", 12.5);
        row("de_DE", "-12.50", -12.5);
        // On the way to 12.50.
        row("de_DE", "12.", 12.0);
        row("en_US", "12,", 12.0);
    }
    void aLonePointOrCommaBeforeTheLastTwoDigitsIsTheDecimalMark() { compareWithRow(); }

    void blanksAndOneCurrencyMarkAreDropped_data()
    {
        addColumns();
        row("en_US", "$1,234.50", 1234.5);
        row("en_US", " 12.50 ", 12.5);
        row("en_US", "1 234", 1234.0);
        row("en_US", "$ 5", 5.0);
        row("en_US", "-$5", -5.0);
        row("en_US", "$1,234", 1234.0);
        row("en_US", "$-5", -5.0);
        row("en_US", "USD 5", 5.0);
        row("en_US", "5 usd", 5.0);
        row("en_US", "€5", 5.0);
        row("de_DE", "1.234,50 €", 1234.5);
        row("de_DE", "$12.50", 12.5);
        row("de_CH", "CHF 1’234.50", 1234.5);
        row("fr_FR", "1 234,50 €", 1234.5);
        row("sv_SE", "1 234,50 kr", 1234.5);
        row("ar_EG", "\u200f١٬٢٣٤٫٥٠\u00a0ج.م.\u200f", 1234.5);
        row("ja_JP", "￥1,234", 1234.0);
        row("da_DK", "12,50 kr.", 12.5);
        row("da_DK", "12,50 kr", 12.5);
        row("bg_BG", "12.50 лв", 12.5);
        row("de_CH", "1 234 567.50", 1234567.5);
    }
    void blanksAndOneCurrencyMarkAreDropped() { compareWithRow(); }

    void groupsOfThreeBeforeTheOtherMarkAreRead_data()
    {
        addColumns();
        row("de_DE", "$1,234.50", 1234.5);
        row("de_DE", "1,234.5", 1234.5);
        row("fr_FR", "1,234,567.89", 1234567.89);
        row("ar_EG", "1,234.50", 1234.5);
        row("de_CH", "1,234.50", 1234.5);
        row("en_US", "1.234,50", 1234.5);
        row("en_US", "1.234.567,8", 1234567.8);
    }
    void groupsOfThreeBeforeTheOtherMarkAreRead() { compareWithRow(); }

    void whatIsAmbiguousOrNoNumberIsRefused_data()
    {
        addColumns();
        row("en_US", "1,2345", std::nullopt);
        row("en_US", "12,345,6", std::nullopt);
        row("en_US", "1.2.3", std::nullopt);
        row("en_US", "12.34.56", std::nullopt);
        row("fr_FR", "12.345", std::nullopt);
        row("ar_EG", "1,234", std::nullopt);
        row("ar_EG", "1.234", std::nullopt);
        row("de_CH", "1,234", std::nullopt);
        row("de_DE", "12,345.678", std::nullopt);
        row("de_DE", "1234,567.8", std::nullopt);
        row("en_US", "abc", std::nullopt);
        row("en_US", "12 50", std::nullopt);
        row("en_US", "12 3456", std::nullopt);
        row("en_US", "1  234", std::nullopt);
        row("de_DE", "12 50,5", std::nullopt);
        row("de_DE", "$1,234", std::nullopt);
        row("en_US", "€1.234", std::nullopt);
        row("de_DE", "0.500", std::nullopt);
        row("en_US", "0,500", std::nullopt);
        row("en_US", "$0,500", std::nullopt);
        row("de_DE", "0,123.45", std::nullopt);
        row("en_US", "12.5²", std::nullopt);
        row("en_US", "①2.50", std::nullopt);
        row("en_US", "12a", std::nullopt);
        row("en_US", "1e5", std::nullopt);
        row("en_US", "0x10", std::nullopt);
        row("en_US", ".", std::nullopt);
        row("en_US", ",", std::nullopt);
        row("en_US", "-", std::nullopt);
        row("en_US", "--5", std::nullopt);
        row("en_US", "$", std::nullopt);
        row("en_US", "$$5", std::nullopt);
        row("en_US", "5-", std::nullopt);
        row("en_US", "∞", std::nullopt);
        row("en_US", "nan", std::nullopt);
    }
    void whatIsAmbiguousOrNoNumberIsRefused() { compareWithRow(); }

    void anEmptyTextIsZero_data()
    {
        addColumns();
        row("en_US", "", 0.0);
        row("en_US", "  ", 0.0);
        row("en_US", "\u00a0", 0.0);
    }
    void anEmptyTextIsZero() { compareWithRow(); }

    void zeroHasNoSign() { QVERIFY(!std::signbit(read("en_US", QStringLiteral("-0")).value())); }

    void anAmountBeyondAllDoublesIsRefused()
    {
        QCOMPARE(read("en_US", QString(400, QLatin1Char('9'))), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(AmountReaderTest)
#include "AmountReaderTest.moc"
