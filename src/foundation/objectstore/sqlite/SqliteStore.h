#pragma once

#include "../NSMergePolicy.h"
#include "History.h"
#include "StoreSchema.h"

#include <QUuid>

#include <limits>

class RowWriter;

/// A record that a context wants saved.
struct RowChange {
    const NSEntityDescription* entity = nullptr;
    qint64 id = 0; ///< without meaning for an insertion
    qint64 version = 0; ///< the version that the context read
    const AttributeValues* values = nullptr;
    quint64 changed = 0; ///< of an update: the attributes to write
};

/// What a context wants saved, in one transaction.
struct SaveRequest {
    std::vector<RowChange> inserts;
    std::vector<RowChange> updates;
    std::vector<RowChange> deletes;
    NSMergePolicy policy = NSMergePolicy::NSErrorMergePolicy;
    QString author;
};

/// What a save made of a request, each list in the order of the request's.
struct SaveOutcome {
    struct Updated {
        enum class Kind { Written, Merged, Gone };
        Kind kind = Kind::Written;
        qint64 version = 0;
        AttributeValues values; ///< where merged: what the store now has
    };

    std::vector<qint64> inserted; ///< the new identities
    std::vector<Updated> updated;
};

/// How a store is opened.
struct StoreSettings {
    QString path;
    Migration migration = Migration::Refuse;
    bool keepsHistory = false;
};

/// One open store file. Every change is one transaction, on the disk when the call returns.
class SqliteStore {
public:
    /// Creates the file where there is none, readable by its owner alone. A file that cannot be
    /// used is left untouched.
    static Result<std::unique_ptr<SqliteStore>> open(
        const StoreSettings& settings, const NSManagedObjectModel& model);

    /// Throws like the functions of StoreSchema; use open().
    SqliteStore(const StoreSettings& settings, const NSManagedObjectModel& model);

    StoreReader& reader() { return m_reader; }
    Result<std::unique_ptr<StoreReader>> openPinnedReader();
    Result<std::unique_ptr<IdentityCursor>> openCursor(const NSFetchRequest& request);

    /// Both fail with CannotOpen once the file was deleted, moved or replaced: what is written into
    /// a file that nobody finds again is lost.
    Result<SaveOutcome> save(const SaveRequest& request);
    /// The identities deleted, ascending.
    Result<std::vector<qint64>> batchDelete(const NSFetchRequest& request, const QString& author);

    [[nodiscard]] bool keepsHistory() const { return m_settings.keepsHistory; }
    /// As many transactions as have so many changes together.
    Result<std::vector<PersistentHistoryTransaction>> historyAfter(
        qint64 number, std::size_t changes = std::numeric_limits<std::size_t>::max());
    /// Forgets insertions and updates up to a transaction; deletions stay.
    Result<void> pruneHistory(qint64 upTo);
    /// The number of the last transaction.
    Result<qint64> lastTransaction();
    /// Whether another connection changed the file since this was last asked.
    Result<bool> wasChangedElsewhere();
    /// The transactions that this object wrote, ascending.
    [[nodiscard]] const std::vector<qint64>& ownTransactions() const { return m_ownTransactions; }
    /// Those up to that number are asked for no more.
    void forgetOwnTransactions(qint64 upTo)
    {
        std::erase_if(m_ownTransactions, [&](qint64 number) { return number <= upTo; });
    }

    /// An identifier of a record that no other record anywhere has.
    Result<QUuid> identifierOf(const NSManagedObjectID& id);

    // For somebody who keeps tables of his own beside the records, in the same transactions. Both
    // belong to the thread of this store; all that they do throws.

    [[nodiscard]] SqliteConnection& connection() { return m_connection; }
    [[nodiscard]] RowWriter rowWriter();
    [[nodiscard]] const EntityTables& tables() const { return *m_tables; }

private:
    void writeHistory(RowWriter& rows, const QString& author);

    StoreSettings m_settings;
    SqliteConnection m_connection;
    std::shared_ptr<const EntityTables> m_tables;
    StoreReader m_reader;
    qint64 m_origin;
    qint64 m_dataVersion = 0;
    std::vector<qint64> m_ownTransactions;
};
