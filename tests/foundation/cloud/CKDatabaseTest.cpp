#include "Bundle.h"
#include "CKContainer.h"

#include <QSemaphore>
#include <QTest>
#include <QThread>

#include <memory>

namespace {

/// What the completion of one deletion was handed.
struct Deletion {
    std::optional<CKError> error;
    QThread* thread = nullptr;
    QSemaphore isDone;
};

std::shared_ptr<Deletion> deleteZone(const CKDatabase& database, const QString& name)
{
    auto deletion = std::make_shared<Deletion>();
    database.deleteRecordZone({ name }, [deletion](const std::optional<CKError>& error) {
        deletion->error = error;
        deletion->thread = QThread::currentThread();
        deletion->isDone.release();
    });
    return deletion;
}

constexpr int longEnough = 30000; // milliseconds; only a failure takes that long

} // namespace

class CKDatabaseTest : public QObject {
    Q_OBJECT

private:
    const CKDatabase m_database = CKContainer(QStringLiteral("a.container")).privateCloudDatabase();

private Q_SLOTS:
    void cleanup() { CKDatabase::setZoneDeletion({}); }

    void withoutAnAccountADeletionEndsInAClearError()
    {
        const auto deletion = deleteZone(m_database, QStringLiteral("bills"));

        QVERIFY(deletion->isDone.tryAcquire(1, longEnough));
        QVERIFY(deletion->error);
        QCOMPARE(deletion->error->localizedDescription,
            QStringLiteral("There is no cloud account to delete the saved bills from."));
    }

    void theContainerAndTheZoneOfItsUserAreHandedOn()
    {
        const auto asked = std::make_shared<QStringList>();
        CKDatabase::setZoneDeletion([asked](const QString& container,
                                        const CKRecordZoneID& zone) -> std::optional<CKError> {
            *asked = { container, zone.zoneName, zone.ownerName };
            return std::nullopt;
        });

        const auto deletion = deleteZone(m_database, QStringLiteral("bills"));

        QVERIFY(deletion->isDone.tryAcquire(1, longEnough));
        QVERIFY(!deletion->error);
        QCOMPARE(*asked,
            (QStringList { QStringLiteral("a.container"), QStringLiteral("bills"),
                QStringLiteral("__defaultOwner__") }));
    }

    void askingDoesNotWaitForTheDeletion()
    {
        const auto mayDelete = std::make_shared<QSemaphore>();
        CKDatabase::setZoneDeletion([mayDelete](const QString&, const CKRecordZoneID&) {
            mayDelete->acquire();
            return std::optional<CKError>(CKError { QStringLiteral("The cloud is not there.") });
        });

        const auto deletion = deleteZone(m_database, QStringLiteral("bills"));

        QCOMPARE(deletion->isDone.available(), 0);
        mayDelete->release();
        QVERIFY(deletion->isDone.tryAcquire(1, longEnough));
        QCOMPARE(deletion->error->localizedDescription, QStringLiteral("The cloud is not there."));
    }

    void theCompletionRunsOnAnotherThread()
    {
        const auto deletion = deleteZone(m_database, QStringLiteral("bills"));

        QVERIFY(deletion->isDone.tryAcquire(1, longEnough));
        QVERIFY(deletion->thread != nullptr);
        QVERIFY(deletion->thread != QThread::currentThread());
    }

    void theProgramsContainerIsNamedByItsBundle()
    {
        const auto named = Bundle::main().stringForInfoKey(QStringLiteral("CKContainerIdentifier"));
        const auto asked = std::make_shared<QString>();
        CKDatabase::setZoneDeletion(
            [asked](const QString& container, const CKRecordZoneID&) -> std::optional<CKError> {
                *asked = container;
                return std::nullopt;
            });

        const auto deletion = deleteZone(
            CKContainer::defaultContainer().privateCloudDatabase(), QStringLiteral("bills"));

        QVERIFY(deletion->isDone.tryAcquire(1, longEnough));
        QVERIFY(named && !named->isEmpty());
        QCOMPARE(*asked, *named);
    }
};

QTEST_GUILESS_MAIN(CKDatabaseTest)
#include "CKDatabaseTest.moc"
