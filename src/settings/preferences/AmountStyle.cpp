#include "AmountStyle.h"

#include "Formatting.h"

QString formattedAmount(double amount, AmountStyle style)
{
    return style == AmountStyle::WithCurrency ? formattedWithCurrency(amount)
                                              : formattedWithSeparator(amount);
}
