#include "ApacheServer.h"
#include "MemoryFileStore.h"
#include "WebDavStore.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDir>
#include <QTest>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>

using namespace mirror;
using Kind = FileError::Kind;

namespace {

constexpr qint64 megabyte = 1024LL * 1024;

QByteArray manyBytes(qsizetype size)
{
    QByteArray bytes(size, '\0');
    for (qsizetype index = 0; index < size; ++index)
        bytes[index] = static_cast<char>(index * 31 % 251);
    return bytes;
}

/// A device that refuses to be written.
class FullDevice : public QIODevice {
public:
    FullDevice() { open(QIODevice::WriteOnly); }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64) override { return -1; }
};

/// How many of the process's connections to the port wait for acknowledgements; -1 where there is
/// no connection at all.
int delayedConnectionsTo(int port)
{
    int delayed = -1;
    const QDir open(QStringLiteral("/proc/self/fd"));
    for (const QString& descriptor : open.entryList(QDir::System | QDir::Files)) {
        sockaddr_in peer {};
        socklen_t size = sizeof peer;
        const int socket = descriptor.toInt();
        if (::getpeername(socket, reinterpret_cast<sockaddr*>(&peer), &size) != 0
            || peer.sin_family != AF_INET || ntohs(peer.sin_port) != port)
            continue;
        int isUndelayed = 0;
        size = sizeof isUndelayed;
        if (::getsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &isUndelayed, &size) == 0)
            delayed = std::max(delayed, 0) + (isUndelayed == 0 ? 1 : 0);
    }
    return delayed;
}

QList<FileEntry> sorted(QList<FileEntry> entries)
{
    std::sort(entries.begin(), entries.end(),
        [](const FileEntry& one, const FileEntry& other) { return one.name < other.name; });
    return entries;
}

} // namespace

/// What every FileStore promises, kept by the one in memory as by the one of a real server.
class FileStoreTest : public QObject {
    Q_OBJECT

private:
    ApacheServer m_apache;
    std::unique_ptr<FileStore> m_store;

    [[nodiscard]] std::unique_ptr<FileStore> webDavStore(const QUrl& root) const
    {
        return std::make_unique<WebDavStore>(
            WebDavAccount { root, ApacheServer::user(), ApacheServer::password(),
                WebDavAccount::SelfSigned::AcceptPinned, {} },
            WebDavManners { "Test/1" });
    }

    [[nodiscard]] QByteArray bytesOf(const QString& file)
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        return m_store->get(file, buffer, 8 * megabyte) ? buffer.data() : QByteArray("no file");
    }

    [[nodiscard]] bool exists(const QString& name)
    {
        const Outcome<QList<FileEntry>> entries = m_store->list(QString());
        return entries && std::any_of(entries->cbegin(), entries->cend(), [&](const auto& entry) {
            return entry.name == name;
        });
    }

private Q_SLOTS:
    void initTestCase_data()
    {
        QTest::addColumn<QString>("place");
        QTest::newRow("memory") << QString();
        QTest::newRow("http") << m_apache.plainUrl().toString();
        QTest::newRow("https") << m_apache.secureUrl().toString();
    }

    void init()
    {
        QFETCH_GLOBAL(QString, place);
        if (place.isEmpty())
            m_store = std::make_unique<MemoryFileStore>(std::make_shared<MemoryFiles>());
        else
            m_store = webDavStore(QUrl(place));
        const Outcome<QList<FileEntry>> entries = m_store->list(QString());
        QVERIFY2(entries, qPrintable(entries ? QString() : entries.error().sentence));
        for (const FileEntry& entry : *entries) {
            const bool isFile = entry.type == FileEntry::Type::File;
            const QString path = isFile ? entry.name : entry.name + QLatin1Char('/');
            QVERIFY(m_store->remove(path, Trash::Skip));
        }
    }

    void aFileComesBackAsItWasStored()
    {
        const QByteArray bytes = manyBytes(megabyte);
        QVERIFY(m_store->put(QStringLiteral("file"), bytes));

        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        const Outcome<Download> download
            = m_store->get(QStringLiteral("file"), buffer, bytes.size());

        QVERIFY(download);
        QVERIFY(buffer.data() == bytes);
        QCOMPARE(download->size, bytes.size());
        QCOMPARE(
            download->sha256, QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
    }

    void theEndOfAFileIsNotHeldBack()
    {
        QVERIFY(m_store->put(QStringLiteral("file"), manyBytes(megabyte)));

        QFETCH_GLOBAL(QString, place);
        if (!place.isEmpty())
            QCOMPARE(delayedConnectionsTo(QUrl(place).port()), 0);
    }

    void anEmptyFileIsAFile()
    {
        QVERIFY(m_store->put(QStringLiteral("file"), QByteArray()));

        QCOMPARE(bytesOf(QStringLiteral("file")), QByteArray());
        QVERIFY(exists(QStringLiteral("file")));
    }

    void storingAgainReplacesTheBytes()
    {
        QVERIFY(m_store->put(QStringLiteral("file"), "a long first text"));
        QVERIFY(m_store->put(QStringLiteral("file"), "second"));

        QCOMPARE(bytesOf(QStringLiteral("file")), QByteArray("second"));
    }

    void unusualNamesComeBackAsTheyWereGiven()
    {
        const QStringList names { QStringLiteral("a name with blanks "),
            QStringLiteral("Zoë’s für 日本 🍜"), QStringLiteral("100% + & ; = ? # [x] ~ 'y'"),
            QStringLiteral("%41%2F%2e"), QStringLiteral("a:b"), QStringLiteral("<&amp;>\"") };
        const QString folder = QStringLiteral("ein Ordner/");
        QVERIFY(m_store->makeCollection(folder));

        for (const QString& name : names)
            QVERIFY2(m_store->put(folder + name, name.toUtf8()), qPrintable(name));

        const Outcome<QList<FileEntry>> entries = m_store->list(folder);
        QVERIFY(entries);
        QStringList listed;
        for (const FileEntry& entry : *entries)
            listed.append(entry.name);
        QCOMPARE(QSet(listed.cbegin(), listed.cend()), QSet(names.cbegin(), names.cend()));
        for (const QString& name : names)
            QCOMPARE(bytesOf(folder + name), name.toUtf8());
    }

    void aListingTellsFilesWithTheirSizesFromCollections()
    {
        QVERIFY(m_store->put(QStringLiteral("a"), "12345"));
        QVERIFY(m_store->makeCollection(QStringLiteral("b")));
        QVERIFY(m_store->put(QStringLiteral("b/hidden"), "1"));

        const Outcome<QList<FileEntry>> entries = m_store->list(QString());

        QVERIFY(entries);
        QCOMPARE(sorted(*entries),
            (QList<FileEntry> { { QStringLiteral("a"), FileEntry::Type::File, 5 },
                { QStringLiteral("b"), FileEntry::Type::Collection, std::nullopt } }));
    }

    void anEmptyCollectionIsListedAsEmpty()
    {
        QVERIFY(m_store->makeCollection(QStringLiteral("empty")));

        const Outcome<QList<FileEntry>> entries = m_store->list(QStringLiteral("empty/"));

        QVERIFY(entries);
        QVERIFY(entries->isEmpty());
    }

    void whatIsMissingIsNotFound()
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);

        QCOMPARE(m_store->list(QStringLiteral("none/")).error().kind, Kind::NotFound);
        QCOMPARE(m_store->get(QStringLiteral("none"), buffer, 1).error().kind, Kind::NotFound);
        QCOMPARE(m_store->remove(QStringLiteral("none"), Trash::Skip).error().kind, Kind::NotFound);
        QCOMPARE(m_store->remove(QStringLiteral("none/"), Trash::Use).error().kind, Kind::NotFound);
        QCOMPARE(m_store->list(QStringLiteral("none/")).error().status, 404);
        QVERIFY(buffer.data().isEmpty());
    }

    void nothingCanBeStoredInAMissingCollection()
    {
        QCOMPARE(m_store->put(QStringLiteral("none/file"), "bytes").error().kind, Kind::Conflict);
        QCOMPARE(
            m_store->makeCollection(QStringLiteral("none/inner/")).error().kind, Kind::Conflict);
        QVERIFY(!exists(QStringLiteral("none")));
    }

    void aDeepCollectionIsMadeLevelByLevel()
    {
        QString path;
        for (int level = 0; level < 8; ++level) {
            path += QStringLiteral("Ebene %1/").arg(level);
            const Outcome<Making> making = m_store->makeCollection(path);
            QVERIFY(making);
            QCOMPARE(*making, Making::Made);
        }
        QVERIFY(m_store->put(path + QStringLiteral("file"), "deep"));

        QCOMPARE(bytesOf(path + QStringLiteral("file")), QByteArray("deep"));
        QCOMPARE(m_store->list(path)->size(), 1);
    }

    void aCollectionIsNotMadeTwice()
    {
        QVERIFY(m_store->makeCollection(QStringLiteral("one")));
        QVERIFY(m_store->put(QStringLiteral("one/file"), "bytes"));

        const Outcome<Making> again = m_store->makeCollection(QStringLiteral("one"));

        QVERIFY(again);
        QCOMPARE(*again, Making::Refused);
        QCOMPARE(bytesOf(QStringLiteral("one/file")), QByteArray("bytes"));
    }

    void aRemovedFileIsGone()
    {
        QVERIFY(m_store->put(QStringLiteral("file"), "bytes"));

        QVERIFY(m_store->remove(QStringLiteral("file"), Trash::Skip));

        QVERIFY(!exists(QStringLiteral("file")));
    }

    void aCollectionIsRemovedWithAllThatIsInIt()
    {
        QVERIFY(m_store->makeCollection(QStringLiteral("outer")));
        QVERIFY(m_store->makeCollection(QStringLiteral("outer/inner")));
        QVERIFY(m_store->put(QStringLiteral("outer/inner/file"), "bytes"));
        QVERIFY(m_store->put(QStringLiteral("outside"), "stays"));

        QVERIFY(m_store->remove(QStringLiteral("outer/"), Trash::Skip));

        QVERIFY(!exists(QStringLiteral("outer")));
        QCOMPARE(bytesOf(QStringLiteral("outside")), QByteArray("stays"));
    }

    void aFileOverTheLimitIsAnError()
    {
        QVERIFY(m_store->put(QStringLiteral("file"), manyBytes(1000)));
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);

        QVERIFY(m_store->get(QStringLiteral("file"), buffer, 1000));
        QCOMPARE(
            m_store->get(QStringLiteral("file"), buffer, 999).error().kind, Kind::NotUnderstood);
    }

    void aDeviceThatTakesNothingIsAnError()
    {
        QVERIFY(m_store->put(QStringLiteral("file"), "bytes"));
        FullDevice device;

        QCOMPARE(m_store->get(QStringLiteral("file"), device, 10).error().kind, Kind::LocalFile);
    }
};

QTEST_GUILESS_MAIN(FileStoreTest)
#include "FileStoreTest.moc"
