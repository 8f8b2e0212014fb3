#pragma once

#include <QString>

#include <functional>
#include <optional>

/// Why the cloud could not be asked, or did not do what it was asked for.
struct CKError {
    QString localizedDescription; ///< one sentence for a person
};

/// Names a zone of records.
struct CKRecordZoneID {
    QString zoneName;
    QString ownerName = QStringLiteral("__defaultOwner__"); ///< the user whose account it is
};

/// The user's own part of a container.
class CKDatabase {
public:
    /// What deletes a zone, given the container's identifier and the zone; may take its time.
    using ZoneDeletion
        = std::function<std::optional<CKError>(const QString&, const CKRecordZoneID&)>;
    using Completion = std::function<void(const std::optional<CKError>&)>;

    explicit CKDatabase(QString containerIdentifier);

    /// What carries deletions out from now on. At first nothing does, and each ends in an error.
    static void setZoneDeletion(ZoneDeletion deletion);

    /// Returns at once. The completion runs later, on a thread of the cloud's own, with the error
    /// where the zone could not be deleted, one being that there is no account.
    void deleteRecordZone(const CKRecordZoneID& zone, const Completion& completion) const;

private:
    QString m_containerIdentifier;
};
