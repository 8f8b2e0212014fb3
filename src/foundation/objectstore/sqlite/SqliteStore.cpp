#include "SqliteStore.h"

#include "RecordOrigin.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QThread>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// The file must exist with the right mode before SQLite opens it: the log and the index beside it
/// get the mode of the file. An existing one is never opened here, because closing it would drop
/// the locks that other connections of this process hold on it.
void ensureOwnFile(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    const int file
        = ::open(name.constData(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file >= 0) {
        ::close(file);
        return;
    }
    const int problem = errno;
    if (problem == EEXIST)
        return;
    throw StoreError { problem == EACCES || problem == EROFS ? StoreError::Code::PermissionDenied
                                                             : StoreError::Code::CannotOpen,
        { QT_TRANSLATE_NOOP("StoreError", "The store file cannot be created: %1."),
            { QString::fromLocal8Bit(std::strerror(problem)) } },
        { { QStringLiteral("path"), path } } };
}

void requireAccess(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    if (::access(name.constData(), R_OK | W_OK) != 0 || ::access(folder.constData(), W_OK) != 0)
        throw StoreError { StoreError::Code::PermissionDenied,
            { QT_TRANSLATE_NOOP("StoreError", "The store file may not be read and written.") },
            { { QStringLiteral("path"), path } } };
}

/// The log and its index lie beside the file itself, not beside a link to it.
void closeToOthers(const QString& path)
{
    const QString file = QFileInfo(path).canonicalFilePath();
    for (const char* suffix : { "", "-wal", "-shm" })
        (void)::chmod(
            QFile::encodeName(file + QLatin1String(suffix)).constData(), S_IRUSR | S_IWUSR);
}

/// Looks at an existing file through a connection that cannot write, so that a file which is not
/// ours stays as it is, byte for byte.
void inspect(const StoreSettings& settings, const NSManagedObjectModel& model)
{
    try {
        SqliteConnection inspection(settings.path, SqliteConnection::Access::Inspect);
        StoreSchema::examine(inspection, model, settings.migration);
    } catch (const SQLite::Exception& exception) {
        // A process that died while it made the file left a journal, which only a connection that
        // writes can undo; what is left then is examined as well.
        if (exception.getExtendedErrorCode() != SQLITE_READONLY_ROLLBACK)
            throw;
    }
}

SqliteConnection openExamined(const StoreSettings& settings, const NSManagedObjectModel& model)
{
    ensureOwnFile(settings.path);
    requireAccess(settings.path);
    if (QFileInfo(settings.path).size() > 0)
        inspect(settings, model);
    closeToOthers(settings.path);
    return { settings.path, SqliteConnection::Access::Write };
}

/// Two processes that make one file at the same time get into each other's way here, and SQLite
/// refuses one of them at once instead of letting it wait.
void useLog(SqliteConnection& connection)
{
    const QDeadlineTimer deadline(SqliteConnection::busyTimeoutMs);
    for (;;) {
        try {
            connection.database().exec("PRAGMA journal_mode = WAL");
            return;
        } catch (const SQLite::Exception& exception) {
            if (exception.getErrorCode() != SQLITE_BUSY || deadline.hasExpired())
                throw;
        }
        QThread::msleep(1);
    }
}

std::shared_ptr<const EntityTables> prepared(
    SqliteConnection& connection, const StoreSettings& settings, const NSManagedObjectModel& model)
{
    StoreSchema::examine(connection, model, settings.migration);
    useLog(connection);
    SQLite::Database& database = connection.database();
    database.exec("PRAGMA synchronous = FULL"); // a save that returned is on the disk
    database.exec("PRAGMA journal_size_limit = " + std::to_string(SqliteConnection::usualLogSize));
    return StoreSchema::prepare(connection, model, settings.migration);
}

} // namespace

Result<std::unique_ptr<SqliteStore>> SqliteStore::open(
    const StoreSettings& settings, const NSManagedObjectModel& model)
{
    return guarded(settings.path, [&] { return std::make_unique<SqliteStore>(settings, model); });
}

SqliteStore::SqliteStore(const StoreSettings& settings, const NSManagedObjectModel& model)
    : m_settings(settings)
    , m_connection(openExamined(settings, model))
    , m_tables(prepared(m_connection, settings, model))
    , m_reader(settings.path, m_tables, StoreReader::View::Newest)
    , m_origin(static_cast<qint64>(QRandomGenerator::system()->generate64()))
    , m_dataVersion(m_connection.integer("PRAGMA data_version"))
{
}

Result<std::unique_ptr<StoreReader>> SqliteStore::openPinnedReader()
{
    return guarded(m_settings.path, [&] {
        return std::make_unique<StoreReader>(m_settings.path, m_tables, StoreReader::View::Pinned);
    });
}

Result<std::unique_ptr<IdentityCursor>> SqliteStore::openCursor(const NSFetchRequest& request)
{
    return guarded(m_settings.path,
        [&] { return std::make_unique<IdentityCursor>(m_settings.path, m_tables, request); });
}

Result<std::vector<PersistentHistoryTransaction>> SqliteStore::historyAfter(
    qint64 number, std::size_t changes)
{
    return guarded(
        m_settings.path, [&] { return readHistory(m_connection, *m_tables, number, changes); });
}

Result<void> SqliteStore::pruneHistory(qint64 upTo)
{
    return guarded(m_settings.path, [&] { ::pruneHistory(m_connection, upTo); });
}

Result<qint64> SqliteStore::lastTransaction()
{
    return guarded(m_settings.path, [&] {
        return m_connection.integer(
            "SELECT max(number) FROM _store_history WHERE stamp IS NOT NULL");
    });
}

Result<bool> SqliteStore::wasChangedElsewhere()
{
    return guarded(m_settings.path, [&] {
        const qint64 version = m_connection.integer("PRAGMA data_version");
        return std::exchange(m_dataVersion, version) != version;
    });
}

Result<QUuid> SqliteStore::identifierOf(const NSManagedObjectID& id)
{
    return guarded(m_settings.path, [&] {
        return originOf(m_connection, id, m_tables->of(id.entity())).identifierOf(id.number());
    });
}
