#include "LineFields.h"

#include "FixedDigits.h"

namespace mirror {

std::optional<HybridTime> readTime(const JsonValue* json)
{
    if (json == nullptr || !json->is(JsonValue::Kind::String))
        return std::nullopt;
    return HybridTime::fromText(json->text);
}

QByteArray deviceText(DeviceId device) { return fixedHex(static_cast<quint64>(device)); }

std::optional<DeviceId> readDevice(const JsonValue* json)
{
    if (json == nullptr || !json->is(JsonValue::Kind::String))
        return std::nullopt;
    const auto bits = readFixedHex(json->text);
    return bits ? std::optional(DeviceId(*bits)) : std::nullopt;
}

const std::vector<JsonValue>* readArray(const JsonValue* json, std::size_t count)
{
    if (json == nullptr || !json->is(JsonValue::Kind::Array) || json->values.size() != count)
        return nullptr;
    return &json->values;
}

} // namespace mirror
