#include "DateFormatter.h"

#include "Diagnostics.h"
#include "IcuText.h"

#include <unicode/smpdtfmt.h>

struct DateFormatter::Format {
    icu::Locale locale;
    icu::SimpleDateFormat format;
};

namespace {

icu::SimpleDateFormat makeDateFormat(const std::string& locale)
{
    UErrorCode error = U_ZERO_ERROR;
    icu::SimpleDateFormat format(icu::UnicodeString(), icu::Locale(locale.c_str()), error);
    if (U_FAILURE(error))
        fatalError(std::string("No date format: ") + u_errorName(error));
    return format;
}

} // namespace

DateFormatter::DateFormatter(const std::string& locale)
    : m_format(
        std::make_unique<Format>(Format { icu::Locale(locale.c_str()), makeDateFormat(locale) }))
{
}

DateFormatter::~DateFormatter() = default;

void DateFormatter::setPattern(const QString& pattern)
{
    m_format->format.applyPattern(toIcu(pattern));
}

void DateFormatter::setShortDateAndMediumTime()
{
    const std::unique_ptr<icu::DateFormat> styled(icu::DateFormat::createDateTimeInstance(
        icu::DateFormat::kShort, icu::DateFormat::kMedium, m_format->locale));
    // It is one for every locale that ICU knows.
    if (const auto* const format = dynamic_cast<const icu::SimpleDateFormat*>(styled.get()))
        m_format->format = *format;
}

QString DateFormatter::string(const QDateTime& date) const
{
    icu::UnicodeString text;
    m_format->format.format(static_cast<UDate>(date.toMSecsSinceEpoch()), text);
    return fromIcu(text);
}

std::optional<QDateTime> DateFormatter::date(const QString& text) const
{
    icu::ParsePosition position(0);
    const UDate date = m_format->format.parse(toIcu(text), position);
    if (text.isEmpty() || position.getIndex() != text.size())
        return std::nullopt;
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(date));
}
