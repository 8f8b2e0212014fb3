#include "FolderMirror.h"

namespace mirror {

template <class Row>
Outcome<> FolderMirror<Row>::read(const QString& folder, const QList<FileEntry>& listing)
{
    if (auto pulled = m_import.pull(folder, listing, Carriers::Set); !pulled)
        return pulled;
    return forgetVanished(folder, listing);
}

template <class Row>
Outcome<> FolderMirror<Row>::forgetVanished(const QString& folder, const QList<FileEntry>& listing)
{
    std::map<QString, FileKey> missing;
    auto looked = transact(m_world.local, [&] {
        for (const SeenFile& file : m_shelf.files(folder))
            missing.insert_or_assign(file.key.name, file.key);
    });
    if (!looked)
        return looked;
    for (const FileEntry& entry : listing)
        missing.erase(entry.name);
    std::erase_if(m_vanished, [&](const auto& each) {
        return !each.first.startsWith(folder) || !missing.contains(each.first.mid(folder.size()));
    });
    for (const auto& each : missing) {
        const FileKey& file = each.second;
        const WallTime now = m_world.now();
        const auto [known, isNew]
            = m_vanished.try_emplace(file.path(), now + randomDelay(m_world, m_delay));
        // A clock that was set back must not put it off for long.
        if (isNew || (now < known->second && known->second <= now + m_delay))
            continue;
        auto forgotten = transact(m_world.local, [&] { m_shelf.forget(file); });
        if (!forgotten)
            return forgotten;
        m_vanished.erase(known);
    }
    return {};
}

template <class Row> SyncCounts FolderMirror<Row>::takeCounts()
{
    const ImportCounts read = m_import.takeCounts();
    return { read.rowsChanged, m_export.takeCount(), read.badLines, read.doubtfulFiles,
        read.ignoredFiles, m_compaction.takeCount() };
}

template class FolderMirror<Record>;
template class FolderMirror<KeyValue>;

} // namespace mirror
