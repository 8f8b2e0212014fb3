#pragma once

#include <QString>

enum class AmountStyle {
    WithCurrency, ///< $1,234.50
    WithSeparator, ///< 1,234.5
};

/// An amount as the screens and the summary show it.
[[nodiscard]] QString formattedAmount(double amount, AmountStyle style);
