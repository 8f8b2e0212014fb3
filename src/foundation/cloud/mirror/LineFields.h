#pragma once

#include "RecordState.h"

// The fields that lines of several kinds have. Each function that reads one takes the member, which
// may be missing, and returns nothing where it has not exactly that form.

namespace mirror {

[[nodiscard]] std::optional<HybridTime> readTime(const JsonValue* json);

[[nodiscard]] QByteArray deviceText(DeviceId device);
[[nodiscard]] std::optional<DeviceId> readDevice(const JsonValue* json);

/// The elements of an array of exactly that many; null otherwise.
[[nodiscard]] const std::vector<JsonValue>* readArray(const JsonValue* json, std::size_t count);

/// What keeps every line within JsonLimits::LineBytes: a text that is all escapes, the other fields
/// and the unknown keys.
inline constexpr qsizetype MaxQuotedTextBytes = 6 * Text::MaxBytes + 2;
inline constexpr qsizetype MaxUnknownBytes
    = qsizetype(UnknownKeys::MaxCount) * (UnknownKeys::MaxMemberBytes + 1);
inline constexpr qsizetype MaxOtherBytes = 256;

} // namespace mirror
