#include "Activation.h"

#include <algorithm>
#include <limits>

namespace {

const QString startupIdKey = QStringLiteral("desktop-startup-id");
const QString tokenKey = QStringLiteral("activation-token");

constexpr qsizetype longestToken = 1024;

bool isPrintable(QChar character)
{
    return character > QLatin1Char(' ') && character < QChar(0x7f);
}

/// Both texts become words of other protocols: none has a blank or anything beyond ASCII.
QString plausible(const QString& text)
{
    const bool isWord
        = text.size() <= longestToken && std::all_of(text.begin(), text.end(), isPrintable);
    return isWord ? text : QString();
}

/// The number after the last "_TIME", as desktops end their identifiers.
std::optional<std::uint32_t> timeIn(const QString& text)
{
    const QLatin1String mark("_TIME");
    const qsizetype at = text.lastIndexOf(mark);
    if (at < 0)
        return std::nullopt;
    bool isNumber = false;
    const qulonglong time = QStringView(text).mid(at + mark.size()).toULongLong(&isNumber);
    // No time of the server's is 0, which means "now" in its protocol.
    if (!isNumber || time == 0 || time > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    return static_cast<std::uint32_t>(time);
}

} // namespace

Activation Activation::fromEnvironment()
{
    return { .startupId = plausible(qEnvironmentVariable("DESKTOP_STARTUP_ID")),
        .token = plausible(qEnvironmentVariable("XDG_ACTIVATION_TOKEN")) };
}

Activation Activation::fromPlatformData(const QVariantMap& data)
{
    return { .startupId = plausible(data.value(startupIdKey).toString()),
        .token = plausible(data.value(tokenKey).toString()) };
}

QVariantMap Activation::platformData() const
{
    QVariantMap data;
    if (!startupId.isEmpty())
        data.insert(startupIdKey, startupId);
    if (!token.isEmpty())
        data.insert(tokenKey, token);
    return data;
}

std::optional<std::uint32_t> Activation::time() const
{
    const std::optional<std::uint32_t> started = timeIn(startupId);
    return started ? started : timeIn(token);
}
