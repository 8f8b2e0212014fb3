#include "FileHeader.h"

#include "FixedDigits.h"
#include "LineFields.h"

#include <QStringBuilder>

namespace mirror {

namespace {

constexpr qint64 Version = 1;

std::optional<qint64> readInteger(const JsonValue* json, qint64 least, qint64 most)
{
    if (json == nullptr || !json->is(JsonValue::Kind::Integer) || json->integer < least
        || json->integer > most)
        return std::nullopt;
    return json->integer;
}

std::optional<WriterId> readWriter(const JsonValue* json)
{
    const auto sixtyFourBits = readDevice(json);
    return sixtyFourBits ? std::optional(WriterId(*sixtyFourBits)) : std::nullopt;
}

bool isText(const JsonValue* json, const QByteArray& text)
{
    return json != nullptr && json->is(JsonValue::Kind::String) && json->text == text;
}

} // namespace

QByteArray headerLine(const FileHeader& header)
{
    return "{\"fmt\":" + quotedJson(header.format) + ",\"v\":" + QByteArray::number(Version)
        + ",\"n\":" + QByteArray::number(header.lines) + ",\"dev\":\""
        + deviceText(header.origin.device) + "\",\"w\":\""
        + fixedHex(static_cast<quint64>(header.origin.writer)) + "\"}";
}

std::optional<FileHeader> readHeaderLine(QByteArrayView line, const QByteArray& format)
{
    const auto json = readJsonLine(line);
    if (!json || !isText(json->member("fmt"), format))
        return std::nullopt;
    const auto version = readInteger(json->member("v"), Version, Version);
    const auto lines = readInteger(json->member("n"), 0, FileLimits::Lines);
    const auto device = readDevice(json->member("dev"));
    const auto writer = readWriter(json->member("w"));
    if (!version || !lines || !device || !writer)
        return std::nullopt;
    return FileHeader { format, *lines, { *device, *writer } };
}

} // namespace mirror
