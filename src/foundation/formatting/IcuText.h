#pragma once

#include <QString>

#include <unicode/unistr.h>

// QString and ICU's string hold the same UTF-16. For this folder's sources only.

inline icu::UnicodeString toIcu(const QString& text)
{
    return icu::UnicodeString(
        reinterpret_cast<const char16_t*>(text.utf16()), static_cast<int32_t>(text.size()));
}

inline QString fromIcu(const icu::UnicodeString& text)
{
    return QString::fromUtf16(text.getBuffer(), text.length());
}
