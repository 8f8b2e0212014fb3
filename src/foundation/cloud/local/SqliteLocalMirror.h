#pragma once

#include "LocalChanges.h"
#include "SqliteRecordShelf.h"
#include "SqliteValueShelf.h"

class NSManagedObjectModel;

namespace mirror {

/// The certificate that an account is bound to.
struct CertificatePin {
    QString account;
    QByteArray sha256; ///< hexadecimal; empty where there is none
};

/// What a process that shares the file may have decided or told.
struct MirrorStanding {
    MirrorPhase phase = MirrorPhase::Off;
    bool isDeletionPending = false;
    bool hasUntoldValues = false;

    friend bool operator==(const MirrorStanding&, const MirrorStanding&) = default;
};

/// What a device remembers of the mirror, in the file of the records themselves. Belongs to one
/// thread, which is not that of the file's container.
///
/// Whatever others changed in the records is taken in at the beginning of each transaction, so that
/// the states seen in it are those of the records. Much of it is taken in by several, so that
/// nobody waits long for the file.
class SqliteLocalMirror final : public LocalMirror {
public:
    /// The store exists and has the model, which must have the mapping's entity. The model and the
    /// mapping must outlive this.
    static Result<std::unique_ptr<SqliteLocalMirror>> open(
        const QString& file, const NSManagedObjectModel& model, const RecordMapping& mapping);
    ~SqliteLocalMirror() override;

    SqliteRecordShelf& records() override { return m_records; }
    SqliteValueShelf& keyValues() override { return m_values; }
    MirrorMemory memory() override;
    void setMemory(const MirrorMemory& memory) override;
    qint64 revision() override;

    /// Whether others changed records that were not yet taken in. Not within a transaction.
    [[nodiscard]] bool hasLocalChanges();
    /// As if nothing were remembered where it cannot be read. Not within a transaction.
    [[nodiscard]] MirrorStanding standing();
    /// Forgets the part of the history that is older and was taken in. Not within a transaction.
    void forgetHistory(const QDateTime& before);

    // Within a transaction, as the functions above.

    /// Where this was remembered: a name of this machine and the file's path on it.
    [[nodiscard]] QString home();
    void setHome(const QString& home);
    [[nodiscard]] CertificatePin certificatePin();
    void setCertificatePin(const CertificatePin& pin);

protected:
    void begin() override;
    bool commit() override;
    void rollBack() noexcept override;

private:
    SqliteLocalMirror(std::unique_ptr<SqliteStore> store, const RecordMapping& mapping);

    void beginOnce();
    void end();

    std::unique_ptr<SqliteStore> m_store;
    TransactionScope m_scope;
    MemoryTable m_memory;
    SqliteRecordShelf m_records;
    SqliteValueShelf m_values;
    LocalChanges m_changes;
    std::unique_ptr<SQLite::Transaction> m_transaction;
};

} // namespace mirror
