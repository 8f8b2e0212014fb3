#pragma once

#include "FileTable.h"
#include "RecordMapping.h"
#include "RecordTable.h"

namespace mirror {

/// The author of what the mirror writes into the history.
inline const QString MirrorAuthor = QStringLiteral("mirror");

/// The records of an entity as the mirror sees them: their states stand in the records themselves
/// as far as possible, and what the mirror changes, it changes there.
class SqliteRecordShelf final : public LocalShelf<Record> {
public:
    SqliteRecordShelf(TransactionScope& scope, const RecordMapping& mapping)
        : m_scope(scope)
        , m_mapping(mapping)
        , m_table(scope)
        , m_files(scope, FileContent::Records)
    {
    }

    std::optional<Record> find(const QUuid& id) override;
    void store(const Record& record) override;
    void setCarrier(const QUuid& id, const FileKey& file) override;
    void setCarriers(std::span<const Record> records, const FileKey& file) override;
    std::vector<Record> unpublished(const std::optional<QUuid>& after, std::size_t most) override;
    qint64 carriedBy(const FileKey& file) override;
    std::vector<SeenFile> files(const QString& folder) override;
    void remember(const SeenFile& file) override;
    void forget(const FileKey& file) override;
    void forgetAll() override;

    /// Before the end of a transaction: what is still held is written.
    void flush();
    /// After it.
    void reset();

private:
    std::optional<MirroredRow> known(const QUuid& id);
    std::optional<Record> recordOf(
        const MirroredRow& row, const std::optional<AttributeValues>& values) const;
    void write(const Record& record);
    qint64 writeLive(const std::optional<MirroredRow>& before, const LiveRecord& live);
    qint64 writeDead(const std::optional<MirroredRow>& before);

    TransactionScope& m_scope;
    const RecordMapping& m_mapping;
    RecordTable m_table;
    FileTable m_files;
    // Of a merge's three steps - find, store, set the carrier - the first reads the row and the
    // last one writes it, once.
    struct Lookup {
        QUuid id;
        std::optional<MirroredRow> row; ///< nothing where there is none
    };
    std::optional<Lookup> m_lookup;
    std::optional<MirroredRow> m_unwritten;
};

} // namespace mirror
