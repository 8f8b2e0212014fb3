#pragma once

#include <QString>

struct Split;
struct SplitInputs;

enum class AmountStyle {
    WithCurrency, ///< $1,234.50
    WithSeparator, ///< 1,234.5
};

/// An amount as the screens and the summary show it.
[[nodiscard]] QString formattedAmount(double amount, AmountStyle style);

/// The split in plain words, ready to be pasted into a message. Lines are parted by line feeds;
/// where the text ends with the share, it ends in one.
[[nodiscard]] QString splitSummary(
    const SplitInputs& inputs, const Split& split, AmountStyle style);
