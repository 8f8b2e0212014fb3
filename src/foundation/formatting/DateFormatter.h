#pragma once

#include <QDateTime>
#include <QString>

#include <memory>
#include <optional>
#include <string>

/// Writes and reads points in time by a pattern of Unicode TR 35 ("EEE dd MMM yyyy"), in the
/// locale's language, calendar and digits, and the process's time zone.
class DateFormatter {
public:
    /// locale: an ICU identifier.
    explicit DateFormatter(const std::string& locale);
    ~DateFormatter();

    void setPattern(const QString& pattern);
    /// The locale's own short date with its own time to the second.
    void setShortDateAndMediumTime();

    [[nodiscard]] QString string(const QDateTime& date) const;

    /// The point in time that the text names; what the pattern leaves out is at its start (a date
    /// without a time is midnight). Nothing where the text does not follow the pattern.
    [[nodiscard]] std::optional<QDateTime> date(const QString& text) const;

private:
    struct Format; // keeps ICU out of this header
    std::unique_ptr<Format> m_format;
};
