#include "MemoryFileStore.h"

#include <QBuffer>
#include <QTest>

using namespace mirror;
using Kind = FileError::Kind;
using Fault = MemoryFileStore::Fault;
using When = Fault::When;
using Request = MemoryFileStore::Request;

namespace {

const QString name = QStringLiteral("name");

MemoryFileStore::Faults always(const Fault& fault)
{
    return [fault](const Request&) { return fault; };
}

} // namespace

/// The faults that the files in memory can be given; what they do without is FileStoreTest's.
class MemoryFileStoreTest : public QObject {
    Q_OBJECT

private:
    std::shared_ptr<MemoryFiles> m_files;
    std::unique_ptr<MemoryFileStore> m_store;
    QByteArray m_fetched;

    [[nodiscard]] Outcome<Download> fetch()
    {
        QBuffer buffer(&m_fetched);
        buffer.open(QIODevice::WriteOnly | QIODevice::Truncate);
        return m_store->get(name, buffer, 1000);
    }

private Q_SLOTS:
    void init()
    {
        m_files = std::make_shared<MemoryFiles>();
        m_store = std::make_unique<MemoryFileStore>(m_files);
    }

    void aFaultInsteadLeavesEverythingAsItWas()
    {
        m_store->setFaults(always({}));

        QCOMPARE(m_store->put(name, "bytes").error().kind, Kind::Network);
        QCOMPARE(m_store->makeCollection(name).error().kind, Kind::Network);

        QVERIFY(m_files->files.isEmpty());
        QVERIFY(m_files->collections.empty());
    }

    void aLostAnswerLeavesItDone()
    {
        m_store->setFaults(always({ When::Afterwards }));

        QCOMPARE(m_store->put(name, "bytes").error().kind, Kind::Network);

        QCOMPARE(m_files->files.value(name), QByteArray("bytes"));
    }

    void aCutUploadStandsUnderItsFinalName()
    {
        m_store->setFaults(always({ When::Midway, 3 }));

        QCOMPARE(m_store->put(name, "bytes").error().kind, Kind::Network);

        QCOMPARE(m_files->files.value(name), QByteArray("byt"));
    }

    void aCutDownloadMayPassAsWhole()
    {
        m_files->files.insert(name, "bytes");
        m_store->setFaults(always({ When::Midway, 3, std::nullopt }));

        const Outcome<Download> download = fetch();

        QVERIFY(download);
        QCOMPARE(download->size, 3);
        QCOMPARE(m_fetched, QByteArray("byt"));
    }

    void aCollectionCanBeDeletedInPart()
    {
        m_files->collections.insert(QStringLiteral("c/"));
        m_files->files.insert(QStringLiteral("c/a"), "1");
        m_files->files.insert(QStringLiteral("c/b"), "2");
        m_store->setFaults(always({ When::Midway, 1 }));

        QCOMPARE(m_store->remove(QStringLiteral("c/"), Trash::Use).error().kind, Kind::Network);

        QCOMPARE(m_files->files.keys(), QStringList { QStringLiteral("c/b") });
        QVERIFY(m_files->collections.contains(QStringLiteral("c/")));
    }

    void anotherDeviceCanActBetweenTwoRequests()
    {
        MemoryFileStore other(m_files);
        m_store->setFaults([&](const Request&) -> std::optional<Fault> {
            return other.put(name, "another's") ? std::nullopt : std::optional(Fault {});
        });

        QVERIFY(fetch());

        QCOMPARE(m_fetched, QByteArray("another's"));
    }

    void everyRequestIsRemembered()
    {
        (void)m_store->list(QStringLiteral("c"));
        (void)fetch();

        QCOMPARE(m_store->requests().size(), 2);
        QCOMPARE(m_store->requests().first().operation, MemoryFileStore::Operation::List);
        QCOMPARE(m_store->requests().first().path, QStringLiteral("c/"));
        QCOMPARE(m_store->requests().last().operation, MemoryFileStore::Operation::Get);
    }
};

QTEST_GUILESS_MAIN(MemoryFileStoreTest)
#include "MemoryFileStoreTest.moc"
