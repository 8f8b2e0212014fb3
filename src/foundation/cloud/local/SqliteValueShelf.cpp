#include "SqliteValueShelf.h"

namespace mirror {

namespace {

/// Nothing for a line that only damage can have made.
std::optional<KeyValue> entryIn(const SQLite::Column& line)
{
    return readKeyValueLine({ line.getText(), line.getBytes() });
}

void bindKey(SQLite::Statement& statement, int position, const Text& key)
{
    statement.bind(position, key.utf8().constData(), int(key.utf8().size()));
}

} // namespace

std::optional<KeyValue> SqliteValueShelf::find(const Text& key)
{
    return m_scope.attempt([&]() -> std::optional<KeyValue> {
        Query query(m_scope.connection(), "SELECT line FROM _mirror_value WHERE key = ?");
        bindKey(*query, 1, key);
        return query->executeStep() ? entryIn(query->getColumn(0)) : std::nullopt;
    });
}

void SqliteValueShelf::store(const KeyValue& entry)
{
    m_scope.attempt([&] {
        Query query(m_scope.connection(),
            "INSERT INTO _mirror_value (key, line) VALUES (?, ?) ON CONFLICT DO UPDATE SET "
            "line = excluded.line, carrier = NULL");
        bindKey(*query, 1, entry.key);
        query->bind(2, keyValueLine(entry).toStdString());
        query->exec();
    });
}

void SqliteValueShelf::setCarrier(const Text& key, const FileKey& file)
{
    m_scope.attempt([&] {
        Query query(m_scope.connection(), "UPDATE _mirror_value SET carrier = ? WHERE key = ?");
        query->bind(1, static_cast<int64_t>(m_files.number(file).value()));
        bindKey(*query, 2, key);
        query->exec();
    });
}

std::vector<KeyValue> SqliteValueShelf::unpublished(
    const std::optional<Text>& after, std::size_t most)
{
    return m_scope.attempt([&] {
        Query query(m_scope.connection(),
            "SELECT line FROM _mirror_value WHERE carrier IS NULL AND number > ifnull((SELECT "
            "number FROM _mirror_value WHERE key = ?), 0) ORDER BY number LIMIT ?");
        query->clearBindings();
        if (after)
            bindKey(*query, 1, *after);
        query->bind(2, static_cast<int64_t>(most));
        std::vector<KeyValue> entries;
        while (query->executeStep()) {
            if (auto entry = entryIn(query->getColumn(0)))
                entries.push_back(*std::move(entry));
        }
        return entries;
    });
}

std::vector<KeyValue> SqliteValueShelf::all()
{
    return m_scope.attempt([&] {
        Query query(m_scope.connection(), "SELECT line FROM _mirror_value ORDER BY number");
        std::vector<KeyValue> entries;
        while (query->executeStep()) {
            if (auto entry = entryIn(query->getColumn(0)))
                entries.push_back(*std::move(entry));
        }
        return entries;
    });
}

qint64 SqliteValueShelf::carriedBy(const FileKey& file)
{
    return m_scope.attempt([&]() -> qint64 {
        const auto carrier = m_files.number(file);
        if (!carrier)
            return 0;
        Query query(m_scope.connection(), "SELECT count(*) FROM _mirror_value WHERE carrier = ?");
        query->bind(1, static_cast<int64_t>(*carrier));
        query->executeStep();
        return query->getColumn(0).getInt64();
    });
}

std::vector<SeenFile> SqliteValueShelf::files(const QString& folder)
{
    return m_scope.attempt([&] { return m_files.files(folder); });
}

void SqliteValueShelf::remember(const SeenFile& file)
{
    m_scope.attempt([&] { m_files.remember(file); });
}

void SqliteValueShelf::forget(const FileKey& file)
{
    m_scope.attempt([&] {
        if (const auto carrier = m_files.number(file)) {
            Query query(
                m_scope.connection(), "UPDATE _mirror_value SET carrier = NULL WHERE carrier = ?");
            query->bind(1, static_cast<int64_t>(*carrier));
            query->exec();
        }
        m_files.forget(file);
    });
}

void SqliteValueShelf::forgetAll()
{
    m_scope.attempt([&] {
        Query query(m_scope.connection(), "UPDATE _mirror_value SET carrier = NULL");
        query->exec();
        m_files.forgetAll();
    });
}

} // namespace mirror
