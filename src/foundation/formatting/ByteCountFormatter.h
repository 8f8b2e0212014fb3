#pragma once

#include <QString>

#include <string>

/// A number of bytes as a file manager shows it: "1 byte", "12 bytes", "1.5 kB", "2.0 MB"; decimal
/// units, and one fraction digit from kilobytes on. The unit is the smallest in which the rounded
/// number has at most three digits before its mark. locale: an ICU identifier.
[[nodiscard]] QString byteCountText(quint64 bytes, const std::string& locale);
