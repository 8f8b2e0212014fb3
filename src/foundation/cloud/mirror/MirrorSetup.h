#pragma once

#include "Compaction.h"

namespace mirror {

/// Where the mirror keeps its files below the store's root. Paths of collections.
struct MirrorFolders {
    QString container; ///< for example "com.example.program/"

    [[nodiscard]] QString zone() const
    {
        return container + QStringLiteral("com.apple.coredata.cloudkit.zone/");
    }
    [[nodiscard]] QString epoch(const Epoch& epoch) const
    {
        return zone() + epoch.folderName() + QLatin1Char('/');
    }
    [[nodiscard]] QString keyValues() const { return container + QStringLiteral("kv/"); }
};

/// Who mirrors what where.
struct MirrorSetup {
    MirrorFolders folders;
    QString account; ///< which server and which user: the carriers belong to it
    QByteArray readme; ///< for people who find the folder
    WriterId writer {}; ///< drawn at each start of the program
    CompactionRule compaction = {};
};

} // namespace mirror
