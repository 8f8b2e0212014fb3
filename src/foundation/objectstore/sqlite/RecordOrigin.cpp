#include "RecordOrigin.h"

#include <limits>

QUuid RecordOrigin::identifierOf(qint64 number) const
{
    const auto low = static_cast<quint64>(number);
    const auto byteOf
        = [](quint64 value, int index) { return static_cast<uchar>(value >> (56 - 8 * index)); };
    // The form of a custom identifier (RFC 9562, version 8), with 58 of the 64 random bits.
    return QUuid(static_cast<uint>(bits >> 32), static_cast<ushort>(bits >> 16),
        static_cast<ushort>((bits & 0x0fff) | 0x8000),
        static_cast<uchar>((byteOf(low, 0) & 0x3f) | 0x80), byteOf(low, 1), byteOf(low, 2),
        byteOf(low, 3), byteOf(low, 4), byteOf(low, 5), byteOf(low, 6), byteOf(low, 7));
}

RecordOrigin originOf(
    SqliteConnection& connection, const NSManagedObjectID& id, const EntityTable& table)
{
    Query query(connection,
        "SELECT first, identifier, (SELECT min(first) FROM _store_origin WHERE entity = ?1 "
        "AND first > ?2) FROM _store_origin WHERE entity = ?1 AND first <= ?2 "
        "ORDER BY first DESC LIMIT 1");
    query->bind(1, table.number());
    query->bind(2, static_cast<int64_t>(id.number()));
    if (!query->executeStep())
        throw StoreError { StoreError::Code::ObjectMissing,
            { "%1 was never saved.", { id.toString() } }, {} };
    RecordOrigin origin;
    origin.first = query->getColumn(0).getInt64();
    origin.bits = static_cast<quint64>(query->getColumn(1).getInt64());
    const SQLite::Column next = query->getColumn(2);
    origin.end = next.isNull() ? std::numeric_limits<qint64>::max() : next.getInt64();
    return origin;
}
