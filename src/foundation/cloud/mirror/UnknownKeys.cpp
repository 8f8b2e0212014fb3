#include "UnknownKeys.h"

#include <QStringBuilder>

#include <algorithm>

namespace mirror {

namespace {

QByteArray memberText(const QByteArray& name, const QByteArray& value)
{
    return quotedJson(name) + ":" + value;
}

} // namespace

std::optional<UnknownKeys> UnknownKeys::of(
    const JsonValue& object, std::initializer_list<QByteArrayView> known)
{
    UnknownKeys unknown;
    for (std::size_t i = 0; i < object.values.size(); ++i) {
        const QByteArray& name = object.names[i];
        if (std::find(known.begin(), known.end(), name) != known.end())
            continue;
        const QByteArray value = object.values[i].toText();
        if (memberText(name, value).size() > MaxMemberBytes)
            return std::nullopt;
        unknown.m_values.emplace(name, value);
    }
    if (unknown.m_values.size() > MaxCount)
        return std::nullopt;
    return unknown;
}

UnknownKeys join(const UnknownKeys& left, const UnknownKeys& right)
{
    UnknownKeys joined = left;
    for (const auto& [name, value] : right.m_values) {
        QByteArray& kept = joined.m_values[name];
        kept = std::max(kept, value);
    }
    while (joined.m_values.size() > UnknownKeys::MaxCount)
        joined.m_values.erase(std::prev(joined.m_values.end()));
    return joined;
}

QByteArray UnknownKeys::toText() const
{
    QByteArray text;
    for (const auto& [name, value] : m_values)
        text += "," + memberText(name, value);
    return text;
}

} // namespace mirror
