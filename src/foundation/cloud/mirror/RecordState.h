#pragma once

#include "Attributes.h"
#include "HybridTime.h"
#include "UnknownKeys.h"

#include <QUuid>

#include <variant>

namespace mirror {

/// Who changed something: 64 random bits of one installation.
enum class DeviceId : quint64 {};

/// What a record was made with, which never changes. Two records made with one identity, by a
/// cloned installation, become one.
struct Content {
    HybridTime time;
    Attributes attributes;

    std::strong_ordering operator<=>(
        const Content& other) const = default; // NOLINT(modernize-use-nullptr)
};

/// The one text that can be changed later. The text takes part in the order, so that clones with
/// one device identity agree, too; none is less than any.
struct Renaming {
    HybridTime time;
    DeviceId device {};
    std::optional<Text> text;

    std::strong_ordering operator<=>(
        const Renaming& other) const = default; // NOLINT(modernize-use-nullptr)
};

struct LiveRecord {
    Content content;
    Renaming renaming;
    UnknownKeys unknown;

    bool operator==(const LiveRecord& other) const = default;
};

/// What stays of a deleted record, for ever.
struct DeadRecord {
    HybridTime time;
    UnknownKeys unknown;

    bool operator==(const DeadRecord& other) const = default;
};

using RecordState = std::variant<LiveRecord, DeadRecord>;

/// What two devices that know one record by these states both arrive at. Commutative, associative
/// and idempotent:
/// - live and dead give the dead one, whole: nothing of a deleted record is kept;
/// - two dead ones give the later time and both unknown keys;
/// - two live ones give the smaller content, the larger renaming and both unknown keys.
[[nodiscard]] RecordState join(const RecordState& left, const RecordState& right);

/// One record: its identity on every device, never used again after its end, and what is known.
struct Record {
    QUuid id;
    RecordState state;

    bool operator==(const Record& other) const = default;
};

} // namespace mirror
