#include "Calendar.h"

#include <unicode/calendar.h>

#include <memory>

std::optional<QDateTime> dateByAddingMonths(
    int months, const QDateTime& date, const std::string& locale)
{
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<icu::Calendar> calendar(
        icu::Calendar::createInstance(icu::Locale(locale.c_str()), error));
    if (U_FAILURE(error))
        return std::nullopt;
    calendar->setTime(static_cast<UDate>(date.toMSecsSinceEpoch()), error);
    calendar->add(UCAL_MONTH, months, error);
    const UDate result = calendar->getTime(error);
    if (U_FAILURE(error))
        return std::nullopt;
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(result));
}
