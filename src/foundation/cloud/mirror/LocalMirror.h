#pragma once

#include "FileReader.h"
#include "KeyValue.h"
#include "MirrorNames.h"

#include <span>

namespace mirror {

/// A file on the server, by the path of its collection, with the slash, and its name.
struct FileKey {
    QString folder;
    QString name;

    [[nodiscard]] QString path() const { return folder + name; }

    friend bool operator==(const FileKey&, const FileKey&) = default;
};

/// What is remembered of a file, so that nothing is fetched twice.
struct SeenFile {
    enum class State : quint8 {
        Unread, ///< not to its end: it is to be read
        Damaged, ///< its bytes are not those that its name promises
        NotUnderstood,
        Partial,
        Understood,
    };

    FileKey key;
    std::optional<qint64> size; ///< as listed; another one means that the file is another
    State state = State::Unread;
    qint64 lines = 0; ///< as its header says
};

inline const QUuid& keyOf(const Record& record) { return record.id; }
inline const Text& keyOf(const KeyValue& entry) { return entry.key; }

/// The rows of one kind, tombstones included and for ever, with what is known of the files that
/// carry them.
///
/// A row's carrier is the listed file that holds exactly the row's state; a row without one is to
/// be published. So whoever changes a row in any way takes its carrier in the same transaction, and
/// the latest time of its state goes into MirrorMemory::lastTime there. Rows are changed by others,
/// too, between the transactions of a sync, though never within one.
template <class Row> class LocalShelf {
public:
    using Key = std::remove_cvref_t<decltype(keyOf(std::declval<Row>()))>;

    LocalShelf() = default;
    LocalShelf(const LocalShelf&) = delete;
    LocalShelf& operator=(const LocalShelf&) = delete;
    virtual ~LocalShelf() = default;

    [[nodiscard]] virtual std::optional<Row> find(const Key& key) = 0;
    /// Sets the row to this state, which is new to it, and takes its carrier.
    virtual void store(const Row& row) = 0;
    /// That file, which is remembered, carries the row.
    virtual void setCarrier(const Key& key, const FileKey& file) = 0;
    /// The same for rows that unpublished() gave one after the other, and that are unchanged since.
    virtual void setCarriers(std::span<const Row> rows, const FileKey& file)
    {
        for (const Row& row : rows)
            setCarrier(keyOf(row), file);
    }
    /// The first rows without a carrier that stand behind the key, in any lasting order.
    [[nodiscard]] virtual std::vector<Row> unpublished(
        const std::optional<Key>& after, std::size_t most)
        = 0;
    /// How many rows that file carries.
    [[nodiscard]] virtual qint64 carriedBy(const FileKey& file) = 0;

    /// All that are remembered of that folder.
    [[nodiscard]] virtual std::vector<SeenFile> files(const QString& folder) = 0;
    virtual void remember(const SeenFile& file) = 0;
    /// Forgets the file, and takes it from the rows that it carries.
    virtual void forget(const FileKey& file) = 0;
    /// Forgets every file, of all folders; no row has a carrier then.
    virtual void forgetAll() = 0;
};

enum class MirrorPhase : quint8 {
    Off,
    Joining, ///< switched on by the user, who may thereby create an epoch
    Mirroring,
    Deleted, ///< stopped: another device deleted the zone on purpose; a new epoch is joined
    OtherAccount, ///< stopped: the carriers belong to another account
};

/// A deletion of the zone that is not yet complete.
struct DeletionJournal {
    bool isListed = false; ///< whether the epochs are known; before that, all that a listing shows
    QList<Epoch> epochs;
};

/// What is remembered beside the rows.
struct MirrorMemory {
    MirrorPhase phase = MirrorPhase::Off;
    QString account; ///< that the carriers belong to; empty before the first
    std::optional<Epoch> epoch;
    DeviceId device {};
    HybridTime lastTime; ///< of the clock that stamps changes
    std::chrono::milliseconds clockOffset {}; ///< to be added to the wall clock
    QList<Epoch> closedEpochs; ///< of which a marker was seen
    std::optional<DeletionJournal> deletion;
    int missingListings = 0; ///< valid ones in a row without the epoch, and without its marker
    WallTime missingSince;
};

/// All that a device remembers of the mirror. Calls are made within a transaction only, and one
/// that fails makes the commit fail: what was read counts only after that succeeded.
class LocalMirror {
public:
    LocalMirror() = default;
    LocalMirror(const LocalMirror&) = delete;
    LocalMirror& operator=(const LocalMirror&) = delete;
    virtual ~LocalMirror() = default;

    [[nodiscard]] virtual LocalShelf<Record>& records() = 0;
    [[nodiscard]] virtual LocalShelf<KeyValue>& keyValues() = 0;
    [[nodiscard]] virtual MirrorMemory memory() = 0;
    virtual void setMemory(const MirrorMemory& memory) = 0;
    /// Another number after anything was changed by anybody; sometimes also where nothing was.
    [[nodiscard]] virtual qint64 revision() = 0;

protected:
    friend class LocalTransaction;

    /// Waits for the transactions of others, which wait for this one, too.
    virtual void begin() = 0;
    /// On the disk when it returns true; false where anything failed since begin(), and nothing of
    /// it is done then.
    [[nodiscard]] virtual bool commit() = 0;
    virtual void rollBack() noexcept = 0;
};

/// One transaction, undone unless it was committed.
class LocalTransaction {
public:
    explicit LocalTransaction(LocalMirror& local)
        : m_local(local)
    {
        m_local.begin();
    }
    LocalTransaction(const LocalTransaction&) = delete;
    LocalTransaction& operator=(const LocalTransaction&) = delete;
    ~LocalTransaction()
    {
        if (m_isOpen)
            m_local.rollBack();
    }

    [[nodiscard]] bool commit()
    {
        const bool isDone = m_local.commit();
        m_isOpen = !isDone;
        return isDone;
    }

private:
    LocalMirror& m_local;
    bool m_isOpen = true;
};

} // namespace mirror
