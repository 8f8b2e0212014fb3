#include "CKDatabase.h"

#include <QThreadPool>

#include <mutex>

namespace {

std::mutex deletionMutex;

CKDatabase::ZoneDeletion& deletionInUse()
{
    static CKDatabase::ZoneDeletion instance;
    return instance;
}

std::optional<CKError> deleteZone(const QString& container, const CKRecordZoneID& zone)
{
    CKDatabase::ZoneDeletion deletion;
    {
        const std::scoped_lock lock(deletionMutex);
        deletion = deletionInUse();
    }
    if (!deletion)
        return CKError { QStringLiteral(
            "There is no cloud account to delete the saved bills from.") };
    return deletion(container, zone);
}

} // namespace

CKDatabase::CKDatabase(QString containerIdentifier)
    : m_containerIdentifier(std::move(containerIdentifier))
{
}

void CKDatabase::setZoneDeletion(ZoneDeletion deletion)
{
    const std::scoped_lock lock(deletionMutex);
    deletionInUse() = std::move(deletion);
}

void CKDatabase::deleteRecordZone(const CKRecordZoneID& zone, const Completion& completion) const
{
    QThreadPool::globalInstance()->start([container = m_containerIdentifier, zone, completion] {
        completion(deleteZone(container, zone));
    });
}
