#pragma once

#include <QByteArray>
#include <QDateTime>

#include <chrono>
#include <optional>

namespace mirror {

/// A point in time as HTTP writes it (RFC 9110, section 5.6.7, the preferred form); UTC.
[[nodiscard]] std::optional<QDateTime> httpDate(const QByteArray& text);

/// How long the Retry-After header tells to wait from `now` on: a number of seconds, or the time
/// until a date, never less than nothing. Nothing where it is neither.
[[nodiscard]] std::optional<std::chrono::seconds> retryAfter(
    const QByteArray& text, const QDateTime& now);

} // namespace mirror
