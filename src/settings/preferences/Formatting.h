#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>
#include <variant>

class NumberFormatter;

// How the screens and the summary write numbers, money, services and dates, and how amounts are cut
// to cents. The formatters and the currency symbol are made on first use, from the locale of that
// moment, and kept for the life of the process. Words are in the language of the texts; they are
// given here in English. For the main thread.

/// Default description of a saved bill: a text of the user's from then on, in the language of its
/// day. "Bill".
[[nodiscard]] QString strBill();
[[nodiscard]] QString strAreYouSure(); ///< "Are you sure?"

/// The symbol of the user's currency; "$" in a locale that has none.
[[nodiscard]] const QString& currencySymbol();

/// The bill field's formatter, for showing and reading: the locale's decimal style with at most two
/// fraction digits.
[[nodiscard]] const NumberFormatter& numberFormatterDouble();

/// An amount as the bill field shows it, by that formatter.
[[nodiscard]] QString textFromAmount(double amount);

/// An amount as the user types or pastes it: see AmountReader.h; the user's currency symbol and
/// code may stand beside it. Empty is 0; nothing where the text is ambiguous or no number.
[[nodiscard]] std::optional<double> amountFromText(const QString& text);

/// Whole numbers without grouping. Held for the screens' interface; nothing shows with it yet.
[[nodiscard]] const NumberFormatter& numberFormatterInt();

namespace Formatter {

/// The same text in every locale: 1,234.5.
[[nodiscard]] const NumberFormatter& withSeparator();

/// The user's currency as the locale writes it, at most two fraction digits: $1,234.50.
[[nodiscard]] const NumberFormatter& withCurrency();

} // namespace Formatter

[[nodiscard]] QString formattedWithSeparator(double amount);
[[nodiscard]] QString formattedWithCurrency(double amount);

/// "Yes" or "No".
[[nodiscard]] QString yesOrNo(bool value);

/// The text as a number in the C locale's notation, or 0.0 where it is none.
[[nodiscard]] double toDouble(const QString& text);

/// Why a value cannot be cut to a whole number of 64 bits.
enum class DecimalError { NotFinite, BelowRange, AboveRange };

/// The value without its fraction, cut towards zero; stops the process for one that is not finite
/// or leaves the range of signed 64-bit integers.
[[nodiscard]] qint64 wholeNumber(double value);

/// The amount cut, not rounded, to whole cents, by the binary product with 100: 1.15 gives 1.14.
/// That loss of a cent is the rule that diners and their saved bills rely on.
/// The error where the product is not finite or leaves the range of signed 64-bit integers.
[[nodiscard]] std::variant<double, DecimalError> cutToCents(double amount);

/// cutToCents() for amounts known to be in range; stops the process for others.
[[nodiscard]] double toDecimal(double dF);

/// "Good" for 1, "Excellent" for 2, "Poor" for every other service level.
[[nodiscard]] QString strService(qint64 service);

/// The day as "Sun 05 Nov 2023" in the user's locale, calendar and time zone; "Unknown" where
/// absent.
[[nodiscard]] QString dateStr(const std::optional<QDateTime>& date);

/// The time of day as "19:05" in the user's time zone; "Unknown" where absent.
[[nodiscard]] QString timeStr(const std::optional<QDateTime>& date);

/// The bytes as UTF-8 text; invalid sequences become U+FFFD.
[[nodiscard]] QString toString(const QByteArray& bytes);
