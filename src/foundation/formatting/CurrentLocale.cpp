#include "CurrentLocale.h"

#include <unicode/locid.h>

#include <algorithm>
#include <cstdlib>

namespace {

std::string localeForCategory(const char* category)
{
    for (const char* variable : { "LC_ALL", category, "LANG" }) {
        const char* value = std::getenv(variable);
        if (value && *value)
            return icuLocaleFromPosix(value);
    }
    return icuLocaleFromPosix({});
}

/// What POSIX writes as a modifier ("sr_RS@latin"), ICU writes as a script ("sr_Latn_RS").
std::string_view scriptOfModifier(std::string_view posix)
{
    if (posix.ends_with("@latin"))
        return "_Latn";
    if (posix.ends_with("@cyrillic"))
        return "_Cyrl";
    if (posix.ends_with("@devanagari"))
        return "_Deva";
    return {};
}

} // namespace

std::string moneyLocale() { return localeForCategory("LC_MONETARY"); }

std::string numberLocale() { return localeForCategory("LC_NUMERIC"); }

std::string dateLocale() { return localeForCategory("LC_TIME"); }

std::string icuLocaleFromPosix(std::string_view posix)
{
    const std::string_view language = posix.substr(0, posix.find_first_of(".@"));
    if (language.empty() || language == "C" || language == "POSIX")
        return "en_US";
    std::string name(language);
    name.insert(std::min(name.find('_'), name.size()), scriptOfModifier(posix));
    return icu::Locale::createCanonical(name.c_str()).getName();
}
