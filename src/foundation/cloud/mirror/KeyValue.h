#pragma once

#include "RecordState.h"

namespace mirror {

/// A small value: null, a boolean, an integer or a text. Null is less than any other, and the kinds
/// are ordered as they stand here.
using SmallValue = std::variant<std::monostate, bool, qint64, Text>;

/// What one device last said of a key.
struct KeyValueState {
    HybridTime time;
    DeviceId device {};
    SmallValue value;
    UnknownKeys unknown;

    bool operator==(const KeyValueState& other) const = default;
};

/// The larger by time, device and value, and both unknown keys. Commutative, associative and
/// idempotent.
[[nodiscard]] KeyValueState join(const KeyValueState& left, const KeyValueState& right);

/// One entry of the key-value store that all devices share.
struct KeyValue {
    Text key;
    KeyValueState state;

    bool operator==(const KeyValue& other) const = default;
};

/// One entry as a line, without its line end. Every entry has one, of at most
/// JsonLimits::LineBytes.
[[nodiscard]] QByteArray keyValueLine(const KeyValue& entry);

/// Nothing where the line is not understood.
[[nodiscard]] std::optional<KeyValue> readKeyValueLine(QByteArrayView line);

} // namespace mirror
