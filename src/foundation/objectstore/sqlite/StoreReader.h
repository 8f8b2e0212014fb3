#pragma once

#include "EntityTable.h"

#include <functional>

/// One record as it lies in the store.
struct StoredRow {
    qint64 id = 0;
    qint64 version = 0;
    AttributeValues values;
};

/// The entities of a model as they lie in one file; shared by all that read and write it.
class EntityTables {
public:
    explicit EntityTables(std::vector<EntityTable> tables)
        : m_tables(std::move(tables))
    {
    }

    [[nodiscard]] const std::vector<EntityTable>& all() const { return m_tables; }
    /// Throws StoreError (InvalidRequest) for an entity that the model lacks.
    [[nodiscard]] const EntityTable& named(const QString& name) const;
    [[nodiscard]] const EntityTable& of(const NSEntityDescription* entity) const;
    /// Null for a number that the model does not know.
    [[nodiscard]] const EntityTable* numbered(int number) const;

private:
    std::vector<EntityTable> m_tables;
};

/// Goes through the identities that a request describes, in order, without holding them: slice by
/// slice on its own connection, all from the state of the store at its making.
class IdentityCursor {
public:
    /// Throws SQLite::Exception and StoreError.
    IdentityCursor(const QString& path, std::shared_ptr<const EntityTables> tables,
        const NSFetchRequest& request);
    ~IdentityCursor();

    /// How many there are altogether.
    Result<qint64> count();
    /// Appends at least `atLeast` more, fewer only at the end; false then.
    Result<bool> next(std::size_t atLeast, std::vector<qint64>& identities);

private:
    struct Walk;

    std::shared_ptr<const EntityTables> m_tables;
    NSFetchRequest m_request;
    SqliteConnection m_connection;
    std::unique_ptr<Walk> m_walk;
};

/// Reads records, either always from the newest state of the store or from one that was pinned.
class StoreReader {
public:
    enum class View { Newest, Pinned };

    /// Throws SQLite::Exception.
    StoreReader(const QString& path, std::shared_ptr<const EntityTables> tables, View view);
    ~StoreReader();

    using Visitor = std::function<void(StoredRow&&)>;

    Result<std::optional<StoredRow>> row(const NSEntityDescription* entity, qint64 id);
    /// Those of the identities that exist, in no particular order.
    Result<void> rows(
        const NSEntityDescription* entity, const std::vector<qint64>& ids, const Visitor& visit);
    /// What the request describes, in its order.
    Result<void> rows(const NSFetchRequest& request, const Visitor& visit);
    Result<std::vector<qint64>> identities(const NSFetchRequest& request);
    Result<qint64> count(const NSFetchRequest& request);

    /// Moves a pinned reader on to the newest state.
    Result<void> advance();

    [[nodiscard]] const EntityTables& tables() const { return *m_tables; }

private:
    void pin();
    void shortenLog();

    std::shared_ptr<const EntityTables> m_tables;
    SqliteConnection m_connection;
    View m_view;
};
