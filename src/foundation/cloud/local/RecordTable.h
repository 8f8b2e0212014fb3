#pragma once

#include "MemoryTable.h"
#include "RecordState.h"

namespace mirror {

/// What the mirror knows of one record beside the record itself.
struct MirroredRow {
    qint64 number = 0; ///< the record's identity, below zero where it was never here
    QUuid identifier;
    HybridTime content; ///< of a dead record the time of its end
    std::optional<HybridTime> renamed; ///< nothing for a dead one
    DeviceId device {}; ///< that renamed it
    QByteArray exact; ///< the record as a line, where the record here does not say it all
    std::optional<qint64> carrier;

    [[nodiscard]] bool isLive() const { return renamed.has_value(); }
    /// Whether the rest of its state is to be read from the record.
    [[nodiscard]] bool needsRecord() const { return isLive() && exact.isEmpty(); }
};

struct MirroredRecord {
    MirroredRow row;
    std::optional<AttributeValues> values; ///< nothing where the record is not here
};

/// The mirrored records. All throws SQLite::Exception.
class RecordTable {
public:
    explicit RecordTable(TransactionScope& scope)
        : m_scope(scope)
    {
    }

    std::optional<MirroredRow> byIdentifier(const QUuid& identifier);
    std::optional<MirroredRow> byNumber(qint64 number);
    /// Those without a carrier behind that number, in the order of their numbers, with the values
    /// of those records that are in the table.
    std::vector<MirroredRecord> unpublished(
        const EntityTable& records, qint64 after, std::size_t most);
    /// In the place of any of that number or identifier.
    void write(const MirroredRow& row);
    void setCarrier(const QUuid& identifier, qint64 carrier);
    // Of the numbers from the first to the last, those without a carrier.
    qint64 countUnpublished(qint64 first, qint64 last);
    void setCarriers(qint64 first, qint64 last, qint64 carrier);
    qint64 carriedBy(qint64 carrier);
    void takeCarrier(qint64 carrier);
    void takeAllCarriers();
    /// For a record that was never here.
    qint64 numberForAbsent();

private:
    TransactionScope& m_scope;
};

} // namespace mirror
