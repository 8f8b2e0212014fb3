#pragma once

#include "NSManagedObjectID.h"

#include <QHash>

#include <utility>
#include <vector>

/// Keys of the changes that a save elsewhere made.
inline const QString NSInsertedObjectsKey = QStringLiteral("inserted");
inline const QString NSUpdatedObjectsKey = QStringLiteral("updated");
inline const QString NSDeletedObjectsKey = QStringLiteral("deleted");

/// What a save changed, as identities under the three keys above; a missing key means none.
using NSObjectIDChanges = QHash<QString, std::vector<NSManagedObjectID>>;

/// Temporary identities, each with the permanent one that replaces it.
using PermanentIdentities = std::vector<std::pair<NSManagedObjectID, NSManagedObjectID>>;

/// What changed in a context since it last told.
struct ObjectChanges {
    struct Update {
        NSManagedObjectID id;
        quint64 attributes = ~quint64(0); ///< positions that may have changed, as a set of bits
    };

    std::vector<NSManagedObjectID> inserted;
    std::vector<Update> updated;
    std::vector<NSManagedObjectID> deleted;
    bool isEverything = false; ///< anything may have changed, the lists do not say what

    [[nodiscard]] bool isEmpty() const
    {
        return !isEverything && inserted.empty() && updated.empty() && deleted.empty();
    }
};
