#include "JsonLine.h"

#include "JsonTree.h"

#include <QStringBuilder>

#include <algorithm>

namespace mirror {

namespace {

bool isControl(char byte) { return static_cast<uchar>(byte) < 0x20; }

void appendEscaped(QByteArray& json, char byte)
{
    switch (byte) {
    case '"':
        json += "\\\"";
        break;
    case '\\':
        json += "\\\\";
        break;
    case '\n':
        json += "\\n";
        break;
    case '\t':
        json += "\\t";
        break;
    default:
        json += "\\u00" + QByteArray(1, byte).toHex();
    }
}

QByteArray objectText(const JsonValue& object)
{
    QByteArray json;
    for (std::size_t i = 0; i < object.values.size(); ++i)
        json += (i == 0 ? "" : ",") + quotedJson(object.names[i]) + ":" + object.values[i].toText();
    return "{" + json + "}";
}

QByteArray arrayText(const JsonValue& array)
{
    QByteArray json;
    for (std::size_t i = 0; i < array.values.size(); ++i)
        json += (i == 0 ? "" : ",") + array.values[i].toText();
    return "[" + json + "]";
}

} // namespace

const JsonValue* JsonValue::member(QByteArrayView name) const
{
    const auto found = std::find(names.begin(), names.end(), name);
    return found == names.end() ? nullptr : &values[std::size_t(found - names.begin())];
}

QByteArray JsonValue::toText() const
{
    switch (kind) {
    case Kind::Null:
        return "null";
    case Kind::Boolean:
        return boolean ? "true" : "false";
    case Kind::Integer:
        return QByteArray::number(integer);
    case Kind::Number:
        return text;
    case Kind::String:
        return quotedJson(text);
    case Kind::Array:
        return arrayText(*this);
    case Kind::Object:
        return objectText(*this);
    }
    return {};
}

// The parser ends at a NUL and skips a byte order mark; neither belongs into a line.
std::optional<JsonValue> readJsonLine(QByteArrayView line)
{
    if (line.size() > JsonLimits::LineBytes || !line.startsWith('{')
        || std::any_of(line.begin(), line.end(), isControl))
        return std::nullopt;
    return readJsonTree(line);
}

QByteArray quotedJson(QByteArrayView utf8)
{
    QByteArray json;
    json.reserve(utf8.size() + 2);
    json += '"';
    // Nearly every text is one run without anything to escape.
    const auto isEscaped = [](char byte) { return isControl(byte) || byte == '"' || byte == '\\'; };
    for (auto run = utf8.begin(); run != utf8.end();) {
        const auto end = std::find_if(run, utf8.end(), isEscaped);
        json += QByteArrayView(run, end);
        run = end;
        if (end != utf8.end())
            appendEscaped(json, *run++);
    }
    json += '"';
    return json;
}

} // namespace mirror
