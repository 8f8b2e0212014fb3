#include "AmountReader.h"

#include "NumberFormatter.h"

#include <QRegularExpression>

#include <algorithm>
#include <charconv>

namespace {

bool isBlank(QChar c) { return c.isSpace() || c.category() == QChar::Other_Format; }

bool isMinus(QChar c) { return c == QLatin1Char('-') || c == QChar(0x2212); }

QString withoutBlanks(const QString& text)
{
    QString result;
    for (const QChar c : text) {
        if (!isBlank(c))
            result += c;
    }
    return result;
}

/// Blanks between digits are groups of three, or two amounts, or a slip of the finger.
bool hasBlanksInsideANumber(const QString& text)
{
    static const QRegularExpression blankAfterADigit(
        QStringLiteral("\\d[\\s\\p{Cf}]+(?=\\d)"), QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression groupOfThree(QStringLiteral("\\d[\\s\\p{Cf}]\\d{3}(?!\\d)"),
        QRegularExpression::UseUnicodePropertiesOption);
    const auto count = [&text](const QRegularExpression& pattern) {
        qsizetype matches = 0;
        for (qsizetype at = 0; (at = text.indexOf(pattern, at)) >= 0; ++at)
            ++matches;
        return matches;
    };
    return count(blankAfterADigit) != count(groupOfThree);
}

enum class Currency { None, Own, Foreign };

/// Takes one currency mark off either end, and says whose it was.
Currency takeCurrencyMark(QString& text, const QStringList& ownMarks)
{
    for (const QString& mark : ownMarks) {
        QString bare = withoutBlanks(mark);
        for (int pass = 0; pass < 2 && !bare.isEmpty(); ++pass) {
            if (text.startsWith(bare, Qt::CaseInsensitive)) {
                text.remove(0, bare.size());
                return Currency::Own;
            }
            if (text.endsWith(bare, Qt::CaseInsensitive)) {
                text.chop(bare.size());
                return Currency::Own;
            }
            if (!bare.endsWith(QLatin1Char('.')))
                break;
            bare.chop(1);
        }
    }
    if (!text.isEmpty() && text.front().category() == QChar::Symbol_Currency) {
        text.remove(0, 1);
        return Currency::Foreign;
    }
    if (!text.isEmpty() && text.back().category() == QChar::Symbol_Currency) {
        text.chop(1);
        return Currency::Foreign;
    }
    return Currency::None;
}

bool takeMinus(QString& text)
{
    if (text.isEmpty() || !isMinus(text.front()))
        return false;
    text.remove(0, 1);
    return true;
}

QString withAsciiDigits(QString text)
{
    for (QChar& c : text) {
        if (c.category() == QChar::Number_DecimalDigit)
            c = QLatin1Char(static_cast<char>('0' + c.digitValue()));
    }
    return text;
}

/// Whether a lone comma or point with three digits after it may group or be the decimal mark.
bool mayBeEither(const QString& text)
{
    static const QRegularExpression loneMark(QStringLiteral("^\\d+[.,]\\d{3}$"));
    return text.contains(loneMark);
}

/// The unsigned amount with a comma or point as its decimal mark.
std::optional<double> readWithEitherMark(const QString& text)
{
    static const QRegularExpression plain(QStringLiteral("^([0-9]*)[.,]([0-9]{0,2})$"));
    static const QRegularExpression grouped(QStringLiteral(
        "^([1-9][0-9]{0,2}(?:(?:,[0-9]{3})+(?=\\.)|(?:\\.[0-9]{3})+(?=,)))[.,]([0-9]{1,2})$"));
    for (const QRegularExpression& pattern : { plain, grouped }) {
        const QRegularExpressionMatch match = pattern.match(text);
        if (!match.hasMatch())
            continue;
        QString whole = match.captured(1);
        whole.remove(QLatin1Char(',')).remove(QLatin1Char('.'));
        if (whole.isEmpty() && match.captured(2).isEmpty())
            continue;
        const QByteArray digits
            = ('0' + whole.toLatin1()) + '.' + (match.captured(2).toLatin1() + '0');
        double value = 0.0;
        const auto read = std::from_chars(digits.begin(), digits.end(), value);
        if (read.ec == std::errc())
            return value;
    }
    return std::nullopt;
}

} // namespace

std::optional<double> readAmount(
    const QString& text, const NumberFormatter& formatter, const QStringList& currencyMarks)
{
    if (const std::optional<double> strict = formatter.number(text))
        return *strict + 0.0; // a negative zero is no amount of its own

    QString bare = withoutBlanks(text);
    if (bare.isEmpty())
        return 0.0;
    // A sign may stand on either side of the currency mark, but once.
    const bool signFirst = takeMinus(bare);
    const Currency currency = takeCurrencyMark(bare, currencyMarks);
    const bool negative = signFirst || takeMinus(bare);
    if (bare.isEmpty() || isMinus(bare.front()) || hasBlanksInsideANumber(text))
        return std::nullopt;

    // Who pastes another currency pastes another notation with it.
    if (currency == Currency::Foreign && mayBeEither(withAsciiDigits(bare)))
        return std::nullopt;
    std::optional<double> amount = formatter.number(bare);
    if (!amount)
        amount = readWithEitherMark(withAsciiDigits(bare));
    if (!amount)
        return std::nullopt;
    return (negative ? -*amount : *amount) + 0.0;
}
