#pragma once

#include <QString>

#include <memory>
#include <optional>
#include <string>

/// Writes and reads numbers as a locale does. Rounds half to even, on the number's shortest decimal
/// text, where there are more fraction digits than allowed.
class NumberFormatter {
public:
    enum class Style {
        Plain, ///< whole numbers without grouping
        Decimal, ///< the locale's decimal mark, grouping and digits
        Currency, ///< the locale's currency: symbol, its place, its usual fraction digits
    };

    /// locale: an ICU identifier. The style is Plain.
    explicit NumberFormatter(const std::string& locale);
    ~NumberFormatter();
    NumberFormatter(NumberFormatter&&) noexcept;
    NumberFormatter& operator=(NumberFormatter&&) noexcept;

    /// Sets every other attribute to the style's defaults in the locale, so the order of settings
    /// matters.
    void setStyle(Style style);
    void setGroupingSeparator(const QString& separator);
    /// Lowers the minimum with it where that was higher.
    void setMaximumFractionDigits(int digits);

    /// The text of a number; never empty ("∞" and "NaN", as the locale writes them, included).
    [[nodiscard]] QString string(double number) const;

    /// The finite number that the whole text is, read strictly: decimal digits of any script,
    /// commas and points only as the locale uses them, grouping only where it belongs and never
    /// after a leading zero, no exponent, nothing before or after. Anything else gives nothing.
    [[nodiscard]] std::optional<double> number(const QString& text) const;

private:
    std::string m_locale;
    struct Format; // keeps ICU out of this header
    std::unique_ptr<Format> m_format;
};

/// The currency symbol of the locale, or "$" where its region has no currency.
[[nodiscard]] QString currencySymbolOf(const std::string& locale);
/// The ISO 4217 code of the locale's currency, empty where its region has none.
[[nodiscard]] QString currencyCodeOf(const std::string& locale);
