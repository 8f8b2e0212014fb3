#include "Baseline.h"

#include "ApacheServer.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <memory>
#include <sqlite3.h>
#include <vector>

namespace {

struct Curl {
    QByteArray output;
    double milliseconds = 0;
};

Curl curl(const QStringList& arguments)
{
    QStringList all { QStringLiteral("-sS"), QStringLiteral("--fail"), QStringLiteral("-u"),
        ApacheServer::user() + QLatin1Char(':') + ApacheServer::password() };
    QProcess process;
    QElapsedTimer watch;
    watch.start();
    process.start(QStringLiteral("curl"), all + arguments);
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        qFatal("curl: %s", process.readAllStandardError().constData());
    return { process.readAllStandardOutput(), double(watch.nsecsElapsed()) / 1e6 };
}

struct ValueFree {
    void operator()(sqlite3_value* value) const { sqlite3_value_free(value); }
};
using Row = std::vector<std::unique_ptr<sqlite3_value, ValueFree>>;

class Database {
public:
    explicit Database(const QString& file)
    {
        if (sqlite3_open(QFile::encodeName(file).constData(), &m_database) != SQLITE_OK)
            qFatal("No file can be made.");
    }
    ~Database() { sqlite3_close(m_database); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    void run(const QByteArray& sql) const
    {
        char* problem = nullptr;
        if (sqlite3_exec(m_database, sql.constData(), nullptr, nullptr, &problem) != SQLITE_OK)
            qFatal("%s", problem);
    }
    [[nodiscard]] sqlite3_stmt* prepare(const QByteArray& sql) const
    {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(m_database, sql.constData(), -1, &statement, nullptr) != SQLITE_OK)
            qFatal("%s", sqlite3_errmsg(m_database));
        return statement;
    }
    [[nodiscard]] std::vector<Row> rows(const QByteArray& sql) const
    {
        sqlite3_stmt* const query = prepare(sql);
        std::vector<Row> rows;
        while (sqlite3_step(query) == SQLITE_ROW) {
            Row row;
            for (int i = 0; i < sqlite3_column_count(query); ++i)
                row.emplace_back(sqlite3_value_dup(sqlite3_column_value(query, i)));
            rows.push_back(std::move(row));
        }
        sqlite3_finalize(query);
        return rows;
    }

private:
    sqlite3* m_database = nullptr;
};

} // namespace

double writeBills(const QString& storeFile, int perTransaction)
{
    const QTemporaryDir folder;
    const Database database(folder.filePath(QStringLiteral("raw")));
    database.run("PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL; ATTACH '"
        + QFile::encodeName(storeFile)
        + "' AS source;"
          "CREATE TABLE Item (_id INTEGER PRIMARY KEY, _version INTEGER, bill, everyone INTEGER, "
          "people INTEGER, ref TEXT, roundshare INTEGER, roundtip INTEGER, service INTEGER, share, "
          "timestamp INTEGER, tip, total); CREATE INDEX stamps ON Item (timestamp);");
    const std::vector<Row> rows = database.rows(
        "SELECT _id, _version, bill, everyone, people, ref, roundshare, roundtip, service, share, "
        "timestamp, tip, total FROM source.Item");
    sqlite3_stmt* const insert
        = database.prepare("INSERT INTO main.Item VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    QElapsedTimer watch;
    watch.start();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (i % std::size_t(perTransaction) == 0)
            database.run(i == 0 ? "BEGIN IMMEDIATE" : "COMMIT; BEGIN IMMEDIATE");
        for (std::size_t column = 0; column < rows[i].size(); ++column)
            sqlite3_bind_value(insert, int(column) + 1, rows[i][column].get());
        if (sqlite3_step(insert) != SQLITE_DONE || sqlite3_reset(insert) != SQLITE_OK)
            qFatal("A row cannot be written.");
    }
    database.run("COMMIT");
    const double taken = double(watch.nsecsElapsed()) / 1e6;
    sqlite3_finalize(insert);
    return taken;
}

Transfer transfer(const QUrl& root, qint64 bytes, int files)
{
    const QTemporaryDir folder;
    QStringList names;
    for (int i = 0; i < files; ++i) {
        QFile file(folder.filePath(QString::number(i)));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("No file can be written.");
        file.write(QByteArray(qsizetype(bytes / files), 'x'));
        names.append(file.fileName());
    }
    const QString there = root.toString(QUrl::FullyEncoded);
    QStringList up;
    QStringList down;
    for (int i = 0; i < files; ++i) {
        up << QStringLiteral("-T") << names[i] << there + QStringLiteral("raw-%1").arg(i);
        down << QStringLiteral("-o") << names[i] << there + QStringLiteral("raw-%1").arg(i);
    }
    return { curl(up).milliseconds, curl(down).milliseconds };
}

namespace {

QByteArray listing(const QUrl& folder)
{
    return curl({ QStringLiteral("-i"), QStringLiteral("-X"), QStringLiteral("PROPFIND"),
                    QStringLiteral("-H"), QStringLiteral("Depth: 1"), QStringLiteral("-H"),
                    QStringLiteral("Content-Type: application/xml"), QStringLiteral("--data"),
                    QStringLiteral("<?xml version=\"1.0\"?><propfind xmlns=\"DAV:\"><prop>"
                                   "<resourcetype/><getcontentlength/></prop></propfind>"),
                    folder.toString(QUrl::FullyEncoded) })
        .output;
}

} // namespace

qint64 listingBytes(const QUrl& folder) { return listing(folder).size(); }

void makeFolder(const QUrl& folder)
{
    (void)curl(
        { QStringLiteral("-X"), QStringLiteral("MKCOL"), folder.toString(QUrl::FullyEncoded) });
}

QUrl epochFolder(const QUrl& folder)
{
    const QUrl zone
        = folder.resolved(QUrl(QStringLiteral("bench/com.apple.coredata.cloudkit.zone/")));
    static const QRegularExpression epoch(QStringLiteral("/(e-[0-9]{13}-[0-9a-f]{16}/)<"));
    const auto match = epoch.match(QString::fromUtf8(listing(zone)));
    if (!match.hasMatch())
        qFatal("There is no epoch.");
    return zone.resolved(QUrl(match.captured(1)));
}

Contents contentsBelow(const QUrl& folder)
{
    static const QRegularExpression length(QStringLiteral("getcontentlength>([0-9]+)</"));
    Contents contents;
    const QString text = QString::fromUtf8(listing(epochFolder(folder)));
    for (const auto& match : length.globalMatch(text)) {
        contents.bytes += match.captured(1).toLongLong();
        ++contents.files;
    }
    return contents;
}
