#include "HttpDate.h"

#include <QLocale>

#include <algorithm>

namespace mirror {

std::optional<QDateTime> httpDate(const QByteArray& text)
{
    QDateTime date = QLocale::c().toDateTime(
        QString::fromLatin1(text.trimmed()), QStringLiteral("ddd, dd MMM yyyy hh:mm:ss 'GMT'"));
    if (!date.isValid())
        return std::nullopt;
    date.setTimeSpec(Qt::UTC);
    return date;
}

std::optional<std::chrono::seconds> retryAfter(const QByteArray& text, const QDateTime& now)
{
    bool isNumber = false;
    const qlonglong seconds = text.trimmed().toLongLong(&isNumber);
    if (isNumber)
        return std::chrono::seconds(std::max(seconds, 0LL));
    const std::optional<QDateTime> date = httpDate(text);
    if (!date)
        return std::nullopt;
    return std::chrono::seconds(std::max(now.secsTo(*date), 0LL));
}

} // namespace mirror
