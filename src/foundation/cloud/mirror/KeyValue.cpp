#include "KeyValue.h"

#include "LineFields.h"

#include <QStringBuilder>

#include <tuple>

namespace mirror {

namespace {

static_assert(2 * MaxQuotedTextBytes + MaxUnknownBytes + MaxOtherBytes <= JsonLimits::LineBytes,
    "whatever is joined from lines that were understood fits into a line again");

auto ranked(const KeyValueState& state) { return std::tie(state.time, state.device, state.value); }

QByteArray textOf(std::monostate) { return "null"; }
QByteArray textOf(bool value) { return value ? "true" : "false"; }
QByteArray textOf(qint64 value) { return QByteArray::number(value); }
QByteArray textOf(const Text& value) { return quotedJson(value.utf8()); }

std::optional<Text> readText(const JsonValue* json)
{
    if (json == nullptr || !json->is(JsonValue::Kind::String))
        return std::nullopt;
    return Text::fromUtf8(json->text);
}

std::optional<SmallValue> readValue(const JsonValue* json)
{
    if (json == nullptr)
        return std::nullopt;
    if (json->is(JsonValue::Kind::Null))
        return SmallValue();
    if (json->is(JsonValue::Kind::Boolean))
        return SmallValue(json->boolean);
    if (json->is(JsonValue::Kind::Integer))
        return SmallValue(json->integer);
    const auto text = readText(json);
    return text ? std::optional(SmallValue(*text)) : std::nullopt;
}

} // namespace

KeyValueState join(const KeyValueState& left, const KeyValueState& right)
{
    KeyValueState joined = ranked(left) < ranked(right) ? right : left;
    joined.unknown = join(left.unknown, right.unknown);
    return joined;
}

QByteArray keyValueLine(const KeyValue& entry)
{
    const KeyValueState& state = entry.state;
    return "{\"id\":" + quotedJson(entry.key.utf8())
        + ",\"v\":" + std::visit([](const auto& value) { return textOf(value); }, state.value)
        + ",\"h\":\"" + state.time.toText() + "\",\"d\":\"" + deviceText(state.device) + "\""
        + state.unknown.toText() + "}";
}

std::optional<KeyValue> readKeyValueLine(QByteArrayView line)
{
    const auto json = readJsonLine(line);
    if (!json)
        return std::nullopt;
    auto key = readText(json->member("id"));
    auto value = readValue(json->member("v"));
    const auto time = readTime(json->member("h"));
    const auto device = readDevice(json->member("d"));
    auto unknown = UnknownKeys::of(*json, { "id", "v", "h", "d" });
    if (!key || !value || !time || !device || !unknown)
        return std::nullopt;
    return KeyValue { *std::move(key), { *time, *device, *std::move(value), *std::move(unknown) } };
}

} // namespace mirror
