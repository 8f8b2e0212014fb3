#include "KeyValueMirror.h"

namespace mirror {

namespace {

constexpr int PollsPerLook = 10;

} // namespace

Outcome<> KeyValueMirror::sync()
{
    if (!m_isDue && ++m_polls < PollsPerLook && !m_values.isWaiting() && !m_values.hasUnpublished())
        return {};
    m_polls = 0;
    auto synced = syncFolder(m_folders.keyValues());
    m_isDue = !synced;
    return synced;
}

Outcome<> KeyValueMirror::syncFolder(const QString& folder)
{
    auto listing = m_listings.list(folder);
    if (!listing) {
        if (!isAbsent(listing.error()))
            return listing.error();
        if (auto made = makeFolder(listing.error()); !made || !m_values.hasUnpublished())
            return made;
        listing = QList<FileEntry>();
    }
    if (auto read = m_values.read(folder, *listing); !read)
        return read;
    if (auto published = m_values.publish(folder); !published)
        return published;
    return m_values.compactWhenDue(folder);
}

/// Where the container is there and the folder is not, it is made for entries that have no file;
/// where neither is, only if there never was one.
Outcome<> KeyValueMirror::makeFolder(const FileError& missing)
{
    const QString& container = m_folders.container;
    const auto around = m_listings.list(container);
    if (!around && !isAbsent(around.error()))
        return around.error();
    bool wasThere = false;
    bool isNeeded = false;
    auto forgotten = transact(m_world.local, [&] {
        LocalShelf<KeyValue>& shelf = m_world.local.keyValues();
        wasThere = !shelf.files(m_folders.keyValues()).empty();
        if (around)
            shelf.forgetAll();
        isNeeded = !shelf.unpublished({}, 1).empty();
    });
    if (!forgotten)
        return forgotten;
    if (!around && wasThere)
        return missing;
    if (!isNeeded)
        return {};
    if (!around) {
        if (auto made = m_world.files.makeCollection(container); !made)
            return made.error();
    }
    if (auto made = m_world.files.makeCollection(m_folders.keyValues()); !made)
        return made.error();
    return {};
}

} // namespace mirror
