#pragma once

#include "MemoryTable.h"
#include "RecordMapping.h"
#include "RecordTable.h"
#include "sqlite/RecordOrigin.h"

class SqliteStore;

namespace mirror {

/// Follows what others than the mirror change in the store, by its history: each change takes the
/// record's carrier and is stamped with the clock, by the time at which it was saved. The history
/// is written in the transaction of the change, so nothing is ever missed, also while the mirror
/// is off or the program does not run.
///
/// All throws SQLite::Exception and StoreError.
class LocalChanges {
public:
    LocalChanges(SqliteStore& store, TransactionScope& scope, const RecordMapping& mapping,
        MemoryTable& memory)
        : m_store(store)
        , m_scope(scope)
        , m_mapping(mapping)
        , m_memory(memory)
        , m_table(scope)
    {
    }

    /// From the first time on that mirroring is switched on: all records that are there by now are
    /// taken as just made.
    void startFollowing();
    /// Takes in at most so many changes; false where there may be more.
    bool follow(std::size_t most);
    /// Whether there is anything to take in that the mirror did not write.
    bool hasNews();

private:
    struct Progress {
        qint64 history = 0; ///< the last row of the history that was taken in whole
        qint64 done = 0; ///< how many changes of the next one were
        std::optional<qint64> scanned; ///< the last record that was taken in; nothing after all
    };

    std::optional<Progress> progress();
    void write(const Progress& progress);
    std::size_t scan(Progress& progress, std::size_t most);
    std::size_t takeIn(Progress& progress, std::size_t most);
    void takeIn(const HistoryRow& row, qint64 number);
    void insert(qint64 number, const AttributeValues& values, qint64 stamp);
    QUuid identifierOf(qint64 number);
    void change(MirroredRow row, quint64 attributes, qint64 stamp);
    void remove(MirroredRow row, qint64 stamp);
    HybridTime stampFor(qint64 milliseconds);

    SqliteStore& m_store;
    TransactionScope& m_scope;
    const RecordMapping& m_mapping;
    MemoryTable& m_memory;
    RecordTable m_table;
    std::optional<RecordOrigin> m_origin; ///< of this transaction alone
};

} // namespace mirror
