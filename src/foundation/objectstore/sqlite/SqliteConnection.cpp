#include "SqliteConnection.h"

#include <sqlite3.h>

namespace {

/// A connection belongs to one thread, so it needs no lock of its own.
int flagsFor(SqliteConnection::Access access)
{
    switch (access) {
    case SqliteConnection::Access::Write:
        return SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE | SQLite::OPEN_NOMUTEX;
    case SqliteConnection::Access::Read:
        return SQLite::OPEN_READWRITE
            | SQLite::OPEN_NOMUTEX; // a read-only one could not recover a log that it finds
    case SqliteConnection::Access::Inspect:
        break;
    }
    return SQLite::OPEN_READONLY;
}

StoreError::Code codeFor(int code)
{
    using Code = StoreError::Code;
    switch (code) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return Code::Locked;
    case SQLITE_FULL:
        return Code::DiskFull;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return Code::Corrupt;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return Code::PermissionDenied;
    case SQLITE_CANTOPEN:
        return Code::CannotOpen;
    default:
        return Code::InputOutput;
    }
}

} // namespace

SqliteConnection::SqliteConnection(const QString& path, Access access)
    : m_path(path)
    , m_database(path.toStdString(), flagsFor(access), busyTimeoutMs)
{
}

SQLite::Statement& SqliteConnection::statement(const std::string& sql)
{
    std::unique_ptr<SQLite::Statement>& kept = m_statements[sql];
    if (!kept) {
        try {
            kept = std::make_unique<SQLite::Statement>(m_database, sql);
        } catch (...) {
            m_statements.erase(sql);
            throw;
        }
    }
    return *kept;
}

void SqliteConnection::requireInPlace()
{
    int hasMoved = 0; // stays 0 where the file system cannot tell
    (void)sqlite3_file_control(m_database.getHandle(), "main", SQLITE_FCNTL_HAS_MOVED, &hasMoved);
    if (hasMoved != 0)
        throw StoreError { StoreError::Code::CannotOpen,
            { QT_TRANSLATE_NOOP(
                "StoreError", "The store file was deleted, moved or replaced while it was open.") },
            { { QStringLiteral("path"), m_path } } };
}

qint64 SqliteConnection::integer(const std::string& sql)
{
    Query query(*this, sql);
    return query->executeStep() ? query->getColumn(0).getInt64() : 0;
}

StoreError storeErrorFrom(const SQLite::Exception& exception, const QString& path)
{
    return { codeFor(exception.getErrorCode() & 0xff),
        { QT_TRANSLATE_NOOP("StoreError", "The store could not be used: %1."),
            { QString::fromUtf8(exception.what()) } },
        { { QStringLiteral("path"), path },
            { QStringLiteral("sqliteCode"), exception.getExtendedErrorCode() } } };
}
