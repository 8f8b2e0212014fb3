#include "CloudService.h"
#include "CKContainer.h"
#include "NSPersistentCloudKitContainer.h"
#include "StoreFixture.h"

#include <QSemaphore>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>

namespace {

constexpr int longEnough = 30000; // milliseconds; only a failure takes that long

struct Asked {
    std::optional<CKContainer::AccountAnswer> answer;
    std::optional<CKError> error;
    QSemaphore isAnswered;
};

} // namespace

/// The service where there is no account, and where it ends before it could do anything.
class CloudServiceTest : public QObject {
    Q_OBJECT

private:
    const CKContainer m_cloud { QStringLiteral("org.example.notes") };
    const CKRecordZoneID m_zone { QStringLiteral("com.apple.coredata.cloudkit.zone") };
    StoreFolder m_folder;
    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<NSUbiquitousKeyValueStore> m_values;
    std::unique_ptr<NSPersistentContainer> m_container;
    std::unique_ptr<CloudService> m_service;

    CloudSetup setup() const
    {
        return { m_folder.file(), noteModel(), QStringLiteral("Note"), QStringLiteral("title"),
            "notes", QStringLiteral("org.example.notes"), "Ours.\n", "test",
            QStringLiteral("choice") };
    }

    std::shared_ptr<Asked> ask()
    {
        auto asked = std::make_shared<Asked>();
        m_cloud.accountStatus([asked](const CKContainer::AccountAnswer& answer) {
            asked->answer = answer;
            asked->isAnswered.release();
        });
        return asked;
    }

    std::shared_ptr<Asked> deleteZone()
    {
        auto asked = std::make_shared<Asked>();
        m_cloud.privateCloudDatabase().deleteRecordZone(
            m_zone, [asked](const std::optional<CKError>& error) {
                asked->error = error;
                asked->isAnswered.release();
            });
        return asked;
    }

    static bool isAnswered(Asked& asked)
    {
        return QTest::qWaitFor([&] { return asked.isAnswered.tryAcquire(); }, longEnough);
    }

private Q_SLOTS:
    void init()
    {
        m_folder = StoreFolder();
        m_home = std::make_unique<QTemporaryDir>();
        for (const char* variable : { "HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME" })
            qputenv(variable, m_home->path().toLocal8Bit());
        m_values = std::make_unique<NSUbiquitousKeyValueStore>(
            m_home->filePath(QStringLiteral("cloud-values.ini")));
        m_service = std::make_unique<CloudService>(*m_values);
        m_container = openContainer(m_folder.file());
    }

    void cleanup()
    {
        m_service.reset();
        m_container.reset();
    }

    void withoutAnAccountTheAnswerIsThatThereIsNone()
    {
        m_service->start(setup());

        const auto asked = ask();

        QVERIFY(isAnswered(*asked));
        QCOMPARE(asked->answer->status, CKAccountStatus::NoAccount);
        QVERIFY(!asked->answer->error);
    }

    void aQuestionBeforeTheStartWaitsForIt()
    {
        const auto asked = ask();
        QCoreApplication::processEvents();
        QVERIFY(!asked->answer);

        m_service->start(setup());

        QVERIFY(isAnswered(*asked));
    }

    void noQuestionIsAnsweredWhileItIsAsked()
    {
        m_service->start(setup());
        QVERIFY(isAnswered(*ask())); // so that the answer is known
        const auto asked = ask();

        QVERIFY(!asked->isAnswered.tryAcquire(1, 200)); // without an event loop there is none

        QVERIFY(isAnswered(*asked));
    }

    void withoutAnAccountADeletionEndsInAClearError()
    {
        m_service->start(setup());
        QVERIFY(isAnswered(*ask()));

        const auto asked = deleteZone();

        QVERIFY(isAnswered(*asked));
        QVERIFY(asked->error);
        QCOMPARE(asked->error->localizedDescription,
            QStringLiteral("There is no cloud account to delete the saved bills from."));
    }

    void questionsEndWithTheService()
    {
        const auto status = ask();
        const auto deletion = deleteZone();
        QCoreApplication::processEvents();

        m_service.reset(); // never started

        QVERIFY(isAnswered(*status));
        QCOMPARE(status->answer->status, CKAccountStatus::NoAccount);
        QVERIFY(isAnswered(*deletion));
        QVERIFY(deletion->error);
    }

    void withoutAnAccountNothingIsWrittenBesideTheStore()
    {
        const QStringList before = QDir(m_folder.path()).entryList(QDir::Files);
        m_values->setBool(true, QStringLiteral("choice"));
        m_service->start(setup());
        QVERIFY(isAnswered(*ask()));

        QCOMPARE(QDir(m_folder.path()).entryList(QDir::Files), before);
        QCOMPARE(m_values->pendingChanges().size(), 1); // it waits for an account
    }
};

int main(int argc, char** argv)
{
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("XDG_RUNTIME_DIR", "/nonexistent");
    QCoreApplication application(argc, argv);
    CloudServiceTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "CloudServiceTest.moc"
