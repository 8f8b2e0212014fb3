#pragma once

#include <QDateTime>

#include <optional>
#include <string>

/// The same time of day so many months later, or earlier where negative, in the locale's calendar
/// and the process's time zone. A day that the month does not have becomes its last one.
/// locale: an ICU identifier, which may name a calendar ("he_IL@calendar=hebrew").
/// Nothing where the calendar has no such date.
[[nodiscard]] std::optional<QDateTime> dateByAddingMonths(
    int months, const QDateTime& date, const std::string& locale);
