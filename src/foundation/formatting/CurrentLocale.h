#pragma once

#include <string>
#include <string_view>

// The user's locales, by subject, as ICU identifiers ("de_CH"). A desktop may mix them: German
// numbers, Swiss money, English dates.
//
// Each is read from the environment, first set wins: LC_ALL, the subject's own variable, LANG.
// Unset, C and POSIX mean English (United States). A locale need not be generated on the machine.

[[nodiscard]] std::string moneyLocale(); ///< LC_MONETARY
[[nodiscard]] std::string numberLocale(); ///< LC_NUMERIC
[[nodiscard]] std::string dateLocale(); ///< LC_TIME

/// "de_CH.UTF-8" gives "de_CH"; an empty name, "C" and "POSIX" (with any encoding) give "en_US".
[[nodiscard]] std::string icuLocaleFromPosix(std::string_view posix);
