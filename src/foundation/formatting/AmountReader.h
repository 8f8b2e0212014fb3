#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class NumberFormatter;

/// Reads an amount as people type and paste it.
///
/// First strictly, as the formatter writes it. What that refuses is read a second way, the same in
/// every locale: blanks and one currency mark are dropped, and a comma or point that stands once
/// and has at most two digits after it, which end the text, is the decimal mark. In front of it the
/// other mark may group the digits in threes. So 12.50 is twelve and a half under a German locale
/// too, and $1,234.50 can be pasted anywhere.
///
/// An empty or blank text is 0. Nothing where the text is ambiguous or no number: blanks between
/// digits that are not groups of three, for example, or a foreign currency with three digits after
/// its only mark.
///
/// currencyMarks: the texts that may stand for the user's currency, with or without a final point.
/// Beside them, any character that Unicode calls a currency symbol may stand.
[[nodiscard]] std::optional<double> readAmount(
    const QString& text, const NumberFormatter& formatter, const QStringList& currencyMarks);
