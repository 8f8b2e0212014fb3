#include "FileTable.h"

namespace mirror {

void FileTable::bindKey(SQLite::Statement& statement, const FileKey& file) const
{
    statement.bind(1, m_kind);
    statement.bind(2, file.folder.toStdString());
    statement.bind(3, file.name.toStdString());
}

std::optional<qint64> FileTable::number(const FileKey& file)
{
    if (m_last && m_last->first == file)
        return m_last->second;
    Query query(m_scope.connection(),
        "SELECT number FROM _mirror_file WHERE kind = ? AND folder = ? AND name = ?");
    bindKey(*query, file);
    if (!query->executeStep())
        return std::nullopt;
    m_last = { file, query->getColumn(0).getInt64() };
    return m_last->second;
}

std::vector<SeenFile> FileTable::files(const QString& folder)
{
    Query query(m_scope.connection(),
        "SELECT name, size, state, lines FROM _mirror_file WHERE kind = ? AND folder = ?");
    query->bind(1, m_kind);
    query->bind(2, folder.toStdString());
    std::vector<SeenFile> files;
    while (query->executeStep()) {
        SeenFile file;
        file.key = { folder, QString::fromUtf8(query->getColumn(0).getText()) };
        if (!query->getColumn(1).isNull())
            file.size = query->getColumn(1).getInt64();
        file.state = SeenFile::State(query->getColumn(2).getInt());
        file.lines = query->getColumn(3).getInt64();
        files.push_back(std::move(file));
    }
    return files;
}

void FileTable::remember(const SeenFile& file)
{
    Query query(m_scope.connection(),
        "INSERT INTO _mirror_file (kind, folder, name, size, state, lines) "
        "VALUES (?, ?, ?, ?, ?, ?) ON CONFLICT DO UPDATE SET size = excluded.size, "
        "state = excluded.state, lines = excluded.lines");
    query->clearBindings();
    bindKey(*query, file.key);
    if (file.size)
        query->bind(4, static_cast<int64_t>(*file.size));
    query->bind(5, int(file.state));
    query->bind(6, static_cast<int64_t>(file.lines));
    query->exec();
}

void FileTable::forget(const FileKey& file)
{
    m_last.reset();
    Query query(m_scope.connection(),
        "DELETE FROM _mirror_file WHERE kind = ? AND folder = ? AND name = ?");
    bindKey(*query, file);
    query->exec();
}

void FileTable::forgetAll()
{
    m_last.reset();
    Query query(m_scope.connection(), "DELETE FROM _mirror_file WHERE kind = ?");
    query->bind(1, m_kind);
    query->exec();
}

} // namespace mirror
