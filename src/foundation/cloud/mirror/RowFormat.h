#pragma once

#include "KeyValueFile.h"
#include "MirrorNames.h"
#include "RecordFile.h"

#include <algorithm>

namespace mirror {

/// What tells rows of one kind from those of the other: how files say them, and how they merge.
template <class Row> struct RowFormat;

template <> struct RowFormat<Record> {
    static constexpr FileContent Content = FileContent::Records;
    static FilePart write(
        std::span<const Record> rows, const RecordSchema& schema, FileOrigin origin, qint64 bytes)
    {
        return writeRecords(rows, schema, origin, bytes);
    }
    static RecordReader reader(QIODevice& device, const RecordSchema& schema)
    {
        return { device, schema };
    }
    static Record join(const Record& left, const Record& right)
    {
        return { left.id, mirror::join(left.state, right.state) };
    }
    static HybridTime latest(const Record& record)
    {
        if (const auto* live = std::get_if<LiveRecord>(&record.state))
            return std::max(live->content.time, live->renaming.time);
        return std::get<DeadRecord>(record.state).time;
    }
};

template <> struct RowFormat<KeyValue> {
    static constexpr FileContent Content = FileContent::KeyValues;
    static FilePart write(std::span<const KeyValue> rows, const RecordSchema& /*schema*/,
        FileOrigin origin, qint64 bytes)
    {
        return writeKeyValues(rows, origin, bytes);
    }
    static KeyValueReader reader(QIODevice& device, const RecordSchema& /*schema*/)
    {
        return KeyValueReader(device);
    }
    static KeyValue join(const KeyValue& left, const KeyValue& right)
    {
        return { left.key, mirror::join(left.state, right.state) };
    }
    static HybridTime latest(const KeyValue& entry) { return entry.state.time; }
};

} // namespace mirror
