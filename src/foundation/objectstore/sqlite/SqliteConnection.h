#pragma once

#include "../StoreError.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <optional>
#include <string>
#include <unordered_map>

/// One connection to the store file, with its prepared statements.
class SqliteConnection {
public:
    enum class Access { Inspect, Read, Write };

    /// How long a connection waits for another that keeps the file locked.
    static constexpr int busyTimeoutMs = 5000;
    /// The write-ahead log is cut to so many bytes when it starts again from its beginning.
    static constexpr qint64 usualLogSize = qint64(4) * 1024 * 1024;

    /// Inspect never writes, not even a checkpoint. Throws SQLite::Exception.
    SqliteConnection(const QString& path, Access access);

    SqliteConnection(const SqliteConnection&) = delete;
    SqliteConnection& operator=(const SqliteConnection&) = delete;

    SQLite::Database& database() { return m_database; }
    [[nodiscard]] const QString& path() const { return m_path; }

    /// A statement prepared once and kept.
    SQLite::Statement& statement(const std::string& sql);
    /// Throws StoreError where the path no longer leads to the file that is open.
    void requireInPlace();
    /// For a query of one integer, such as a pragma.
    qint64 integer(const std::string& sql);

private:
    QString m_path;
    SQLite::Database m_database;
    std::unordered_map<std::string, std::unique_ptr<SQLite::Statement>> m_statements;
};

/// One use of a kept statement. A statement left standing on a row would keep its snapshot of the
/// file open, so it is reset when the use ends, however it ends.
class Query {
public:
    Query(SqliteConnection& connection, const std::string& sql)
        : m_statement(connection.statement(sql))
    {
    }
    explicit Query(SQLite::Statement& kept)
        : m_statement(kept)
    {
    }
    ~Query() { m_statement.tryReset(); }
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;

    SQLite::Statement& operator*() { return m_statement; }
    SQLite::Statement* operator->() { return &m_statement; }

private:
    SQLite::Statement& m_statement;
};

/// What a failure of the library means to us.
StoreError storeErrorFrom(const SQLite::Exception& exception, const QString& path);

/// Runs the call and turns what it throws into an error value: no exception leaves this folder.
template <class Call> auto guarded(const QString& path, Call call) -> Result<decltype(call())>
{
    try {
        if constexpr (std::is_void_v<decltype(call())>) {
            call();
            return {};
        } else {
            return call();
        }
    } catch (const SQLite::Exception& exception) {
        return storeErrorFrom(exception, path);
    } catch (const StoreError& error) {
        return error;
    }
}
