#include "AttributeJson.h"

#include "LineFields.h"

#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace mirror {

namespace {

constexpr qsizetype MaxNumberBytes = 32; // the shortest form of a double has at most 24

bool isNullable(AttributeKind kind)
{
    return kind == AttributeKind::Date || kind == AttributeKind::Text;
}

bool isInRange(WallTime date) { return date >= EarliestDate && date <= LatestDate; }

template <class Number> void appendNumber(QByteArray& json, Number value)
{
    std::array<char, MaxNumberBytes> digits {};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    json.append(digits.data(), end - digits.data());
}

void append(QByteArray& json, std::monostate) { json += "null"; }

void append(QByteArray& json, bool value) { json += value ? "true" : "false"; }

void append(QByteArray& json, qint32 value) { appendNumber(json, value); }

void append(QByteArray& json, double value)
{
    json += '"';
    appendNumber(json, value);
    json += '"';
}

void append(QByteArray& json, WallTime value)
{
    appendNumber(json, qint64(value.time_since_epoch().count()));
}

void append(QByteArray& json, const Text& value) { json += quotedJson(value.utf8()); }

/// What std::from_chars takes besides decimals begins with a letter: infinities, and what is no
/// number.
bool beginsAsNumber(QByteArrayView text)
{
    const char first = text.startsWith('-') && text.size() > 1 ? text[1] : text.front();
    return first >= '0' && first <= '9';
}

std::optional<Value> readDouble(const QByteArray& text)
{
    if (text.isEmpty() || text.size() > MaxNumberBytes || !beginsAsNumber(text))
        return std::nullopt;
    double value = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value);
    if (error != std::errc() || end != text.end())
        return std::nullopt;
    return Value(value);
}

std::optional<Value> readInteger(qint64 number)
{
    if (!std::in_range<qint32>(number))
        return std::nullopt;
    return Value(static_cast<qint32>(number));
}

std::optional<Value> readDate(qint64 number)
{
    const WallTime date { std::chrono::milliseconds(number) };
    return isInRange(date) ? std::optional<Value>(date) : std::nullopt;
}

std::optional<Value> readText(const QByteArray& utf8)
{
    const auto text = Text::fromUtf8(utf8);
    return text ? std::optional<Value>(*text) : std::nullopt;
}

JsonValue::Kind jsonKind(AttributeKind kind)
{
    switch (kind) {
    case AttributeKind::Boolean:
        return JsonValue::Kind::Boolean;
    case AttributeKind::Integer32:
    case AttributeKind::Date:
        return JsonValue::Kind::Integer;
    case AttributeKind::Double:
    case AttributeKind::Text:
        return JsonValue::Kind::String;
    }
    return JsonValue::Kind::Null;
}

} // namespace

bool isMirrorable(const Value& value, AttributeKind kind)
{
    if (std::holds_alternative<std::monostate>(value))
        return isNullable(kind);
    switch (kind) {
    case AttributeKind::Boolean:
        return std::holds_alternative<bool>(value);
    case AttributeKind::Integer32:
        return std::holds_alternative<qint32>(value);
    case AttributeKind::Double: {
        const auto* number = std::get_if<double>(&value);
        return number != nullptr && std::isfinite(*number);
    }
    case AttributeKind::Date: {
        const auto* date = std::get_if<WallTime>(&value);
        return date != nullptr && isInRange(*date);
    }
    case AttributeKind::Text:
        return std::holds_alternative<Text>(value);
    }
    return false;
}

void appendAttribute(QByteArray& json, const Value& value)
{
    std::visit([&](const auto& content) { append(json, content); }, value);
}

qsizetype mostBytes(AttributeKind kind)
{
    return kind == AttributeKind::Text ? MaxQuotedTextBytes : MaxNumberBytes;
}

std::optional<Value> attributeValue(const JsonValue& json, AttributeKind kind)
{
    if (json.is(JsonValue::Kind::Null) && isNullable(kind))
        return Value();
    if (!json.is(jsonKind(kind)))
        return std::nullopt;
    switch (kind) {
    case AttributeKind::Boolean:
        return Value(json.boolean);
    case AttributeKind::Integer32:
        return readInteger(json.integer);
    case AttributeKind::Double:
        return readDouble(json.text);
    case AttributeKind::Date:
        return readDate(json.integer);
    case AttributeKind::Text:
        return readText(json.text);
    }
    return std::nullopt;
}

} // namespace mirror
