#include "CloudWorker.h"
#include "ApacheServer.h"
#include "FakeOnlineAccounts.h"
#include "PrivateBus.h"
#include "StoreFixture.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTimer>

using namespace mirror;
using namespace std::chrono_literals;

namespace {

constexpr int longEnough = 30'000; // milliseconds; only a failure takes that long
const QString container = QStringLiteral("org.example.notes");
const QString zone = container + QStringLiteral("/com.apple.coredata.cloudkit.zone/");
const QString values = container + QStringLiteral("/kv/");
const QString choice = QStringLiteral("choice");

/// Of a promise that was kept: the error, or an empty text.
QString errorOf(std::future<std::optional<CKError>>& deletion)
{
    const std::optional<CKError> error = deletion.get();
    return error ? error->localizedDescription : QString();
}

bool isKept(const std::future<std::optional<CKError>>& deletion)
{
    return deletion.wait_for(0s) == std::future_status::ready;
}

} // namespace

/// What the thread of the cloud does with an account and a server, here on the test's own thread.
class CloudWorkerTest : public QObject {
    Q_OBJECT

private:
    ApacheServer m_apache;
    FakeOnlineAccounts m_desktop { QDBusConnection::sessionBus() };
    std::unique_ptr<StoreFolder> m_folder;
    std::unique_ptr<NSPersistentContainer> m_container;
    std::unique_ptr<CloudWorker> m_worker;
    std::unique_ptr<CloudWorker> m_other; // another process with the same profile

    [[nodiscard]] CloudSetup setup() const { return setup(*m_folder); }

    [[nodiscard]] static CloudSetup setup(const StoreFolder& folder)
    {
        return { folder.file(), noteModel(), QStringLiteral("Note"), QStringLiteral("title"),
            "notes", container, "Ours.\n", "test", choice };
    }

    static std::unique_ptr<CloudWorker> newWorker()
    {
        return std::make_unique<CloudWorker>(std::make_shared<Cancellation>());
    }

    void startMirroring()
    {
        m_worker->start(setup(), true);
        QTRY_COMPARE_WITH_TIMEOUT(epochs().size(), 1, longEnough);
        QTRY_VERIFY_WITH_TIMEOUT(
            !namesIn(zone + epochs().constFirst() + QLatin1Char('/')).isEmpty(), longEnough);
    }

    [[nodiscard]] WebDavStore server() const
    {
        return { { m_apache.plainUrl(), ApacheServer::user(), ApacheServer::password(),
                     WebDavAccount::SelfSigned::Refuse, {} },
            { "Test/1" } };
    }

    [[nodiscard]] QStringList namesIn(const QString& collection) const
    {
        QStringList names;
        if (const auto entries = server().list(collection)) {
            for (const FileEntry& entry : *entries)
                names.append(entry.name);
        }
        return names;
    }

    [[nodiscard]] QStringList epochs() const
    {
        return namesIn(zone).filter(QRegularExpression(QStringLiteral("^e-")));
    }

    [[nodiscard]] std::future<std::optional<CKError>> deleteZone(CloudWorker& worker) const
    {
        CloudWorker::DeletionPromise promise;
        auto future = promise.get_future();
        worker.deleteZone(container,
            CKRecordZoneID { QStringLiteral("com.apple.coredata.cloudkit.zone") },
            std::move(promise));
        return future;
    }

    void deleteZoneElsewhere()
    {
        const StoreFolder folder;
        const auto store = openContainer(folder.file());
        const auto device = newWorker();
        device->start(setup(folder), true);
        auto deletion = deleteZone(*device);
        QTRY_VERIFY_WITH_TIMEOUT(isKept(deletion), longEnough);
        QVERIFY(epochs().isEmpty());
    }

    [[nodiscard]] MirrorPhase phase() const
    {
        const auto model = noteModel();
        const RecordMapping mapping(
            *model->entity(QStringLiteral("Note")), "notes", QStringLiteral("title"));
        const auto local = SqliteLocalMirror::open(m_folder->file(), *model, mapping);
        return local ? (*local)->standing().phase : MirrorPhase::Off;
    }

    void addAccount() const
    {
        FakeOnlineAccounts::Account account;
        account.identity = ApacheServer::user();
        account.password = ApacheServer::password();
        QUrl url = m_apache.plainUrl();
        url.setScheme(QStringLiteral("dav"));
        account.uri = url.toString();
        m_desktop.add(account);
    }

    /// Something that is no store stands in its place. Returns where it is.
    [[nodiscard]] QString hideStore() const
    {
        QString hidden = m_folder->file() + QStringLiteral("-hidden");
        const bool isHidden
            = QFile::rename(m_folder->file(), hidden) && QDir().mkdir(m_folder->file());
        return isHidden ? hidden : QString();
    }

    void showStore(const QString& hidden) const
    {
        QVERIFY(QDir().rmdir(m_folder->file()));
        QVERIFY(QFile::rename(hidden, m_folder->file()));
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_desktop.start();
        addAccount();
    }

    void init()
    {
        (void)server().remove(container + QLatin1Char('/'), Trash::Skip);
        m_folder = std::make_unique<StoreFolder>();
        m_container = openContainer(m_folder->file());
        addNote(m_container->viewContext(), QStringLiteral("Saved"));
        mustSave(m_container->viewContext());
        m_worker = newWorker();
        m_other = newWorker();
    }

    void cleanup()
    {
        m_other.reset();
        m_worker.reset();
        m_container.reset();
    }

    void whatWasSavedIsInTheCloudAfterTheStart()
    {
        startMirroring();

        QCOMPARE(namesIn(zone + epochs().constFirst() + QLatin1Char('/')).size(), 1);
    }

    void aDeletionIsAnsweredWhenItIsDone()
    {
        startMirroring();

        auto deletion = deleteZone(*m_worker);

        QTRY_VERIFY_WITH_TIMEOUT(isKept(deletion), longEnough);
        QCOMPARE(errorOf(deletion), QString());
        QVERIFY(epochs().isEmpty());
        QCOMPARE(namesIn(zone).size(), 1); // the marker
    }

    void aDeletionThatIsAskedForDuringASyncIsDoneAfterIt()
    {
        startMirroring();
        std::future<std::optional<CKError>> deletion;
        bool wasAnswered = true;
        MirrorPhase phaseThen {};
        QTimer tick;
        connect(&tick, &QTimer::timeout, this, [&] {
            // The only loop within the test's own is the one in which a sync waits for the server.
            if (deletion.valid() || QThread::currentThread()->loopLevel() == 0)
                return;
            deletion = deleteZone(*m_worker);
            wasAnswered = isKept(deletion);
            phaseThen = phase();
        });
        tick.start(0);
        m_worker->setActive(true);
        QTRY_VERIFY_WITH_TIMEOUT(deletion.valid(), longEnough);
        QVERIFY(!wasAnswered);
        QCOMPARE(phaseThen, MirrorPhase::Mirroring);

        QTRY_VERIFY_WITH_TIMEOUT(isKept(deletion), longEnough);
        QCOMPARE(errorOf(deletion), QString());
        QVERIFY(epochs().isEmpty());
    }

    void aChoiceIsToldByTheOneWithTheLockAlsoWhenMadeInAnother()
    {
        startMirroring();
        const qsizetype before = namesIn(values).size();
        QSignalSpy kept(m_other.get(), &CloudWorker::changesKept);
        m_other->start(setup(), true);

        m_other->setChanges({ { choice, true, QDateTime::currentDateTimeUtc() } });

        QTRY_COMPARE_WITH_TIMEOUT(kept.size(), 1, longEnough);
        QTRY_COMPARE_WITH_TIMEOUT(namesIn(values).size(), before + 1, longEnough);
    }

    void aDeletionIsDoneByTheOneWithTheLockAlsoWhenDecidedInAnother()
    {
        startMirroring();
        m_other->start(setup(), true);

        auto deletion = deleteZone(*m_other);

        QTRY_VERIFY_WITH_TIMEOUT(isKept(deletion), longEnough);
        QVERIFY(!errorOf(deletion).isEmpty()); // it is not known here how that ends
        QTRY_VERIFY_WITH_TIMEOUT(epochs().isEmpty(), longEnough);
    }

    void aSwitchIsDoneByTheOneWithTheLockAlsoWhenMadeInAnother()
    {
        startMirroring();
        auto deletion = deleteZone(*m_worker);
        QTRY_VERIFY_WITH_TIMEOUT(isKept(deletion), longEnough);
        m_other->start(setup(), false);

        m_other->switchOn();

        QTRY_COMPARE_WITH_TIMEOUT(epochs().size(), 1, longEnough);
    }

    void withoutAnAccountADeletionConcernsNoLaterOne()
    {
        startMirroring(); // another computer
        m_worker.reset();
        const StoreFolder folder;
        const auto store = openContainer(folder.file());
        m_desktop.tell(QStringLiteral("RemoveAccount"), { FakeOnlineAccounts::Account().id });
        m_other->start(setup(folder), true);
        m_other->switchOn();
        m_other->switchOff();
        auto deletion = deleteZone(*m_other);
        QTRY_VERIFY_WITH_TIMEOUT(isKept(deletion), longEnough);
        QCOMPARE(errorOf(deletion),
            QStringLiteral("There is no cloud account to delete the saved bills from."));

        m_other->switchOn();
        QSignalSpy rounds(m_other.get(), &CloudWorker::valuesKnown);
        addAccount();

        QTRY_VERIFY_WITH_TIMEOUT(!rounds.isEmpty(), longEnough);
        QCOMPARE(epochs().size(), 1);
        QCOMPARE(namesIn(zone).size(), 1); // no marker
        QTRY_COMPARE(titles(store->viewContext()), QStringList { QStringLiteral("Saved") });
    }

    void aDeletionThatIsOvertakenByASwitchOnIsNone()
    {
        startMirroring();
        const QStringList before = namesIn(zone);
        QSignalSpy rounds(m_worker.get(), &CloudWorker::valuesKnown);
        m_worker->switchOff();
        m_worker->switchOn();

        auto deletion = deleteZone(*m_worker);

        QTRY_VERIFY_WITH_TIMEOUT(isKept(deletion), longEnough);
        QVERIFY(errorOf(deletion).contains(QStringLiteral("switched on again")));
        QTRY_VERIFY_WITH_TIMEOUT(!rounds.isEmpty(), longEnough);
        QCOMPARE(namesIn(zone), before);
    }

    void switchingOffIsNotedBeforeAnythingIsAsked()
    {
        startMirroring();

        m_worker->switchOff();
        m_worker.reset(); // the program ends

        m_other->start(setup(), false);
        QTRY_VERIFY_WITH_TIMEOUT(epochs().isEmpty(), longEnough);
    }

    void switchingOffThatCannotBeNotedNowIsNotedLater()
    {
        startMirroring();
        m_worker.reset();
        m_container.reset();
        const QString hidden = hideStore();
        m_other->start(setup(), true);
        auto deletion = deleteZone(*m_other);
        QTRY_VERIFY_WITH_TIMEOUT(isKept(deletion), longEnough);
        QVERIFY(!errorOf(deletion).isEmpty());
        QCOMPARE(epochs().size(), 1);

        showStore(hidden);
        m_other->setActive(true);

        QTRY_VERIFY_WITH_TIMEOUT(epochs().isEmpty(), longEnough);
    }

    void switchingOnThatCannotBeNotedNowIsNotedLater()
    {
        startMirroring();
        deleteZoneElsewhere();
        m_worker->setActive(true);
        QTRY_COMPARE_WITH_TIMEOUT(phase(), MirrorPhase::Deleted, longEnough);
        m_worker.reset();
        m_container.reset();
        const QString hidden = hideStore();
        m_other->start(setup(), false);
        m_other->switchOn();
        QCoreApplication::processEvents();

        showStore(hidden);
        m_other->setActive(true);

        QTRY_COMPARE_WITH_TIMEOUT(epochs().size(), 1, longEnough);
    }
};

int main(int argc, char* argv[])
{
    const PrivateBus bus;
    const QCoreApplication application(argc, argv);
    const QTemporaryDir home;
    for (const char* variable : { "HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME" })
        qputenv(variable, home.path().toLocal8Bit());
    CloudWorkerTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "CloudWorkerTest.moc"
