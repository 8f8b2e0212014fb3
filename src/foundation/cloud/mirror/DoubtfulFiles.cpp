#include "DoubtfulFiles.h"

#include "RetryDelay.h"

#include <set>

namespace mirror {

namespace {

constexpr auto LongestAway = std::chrono::hours(1); // several times what anything is put off

} // namespace

void DoubtfulFiles::add(const QString& path, std::optional<qint64> size)
{
    Doubt& doubt = m_files[path];
    doubt.attempts = doubt.size == size ? doubt.attempts + 1 : 1;
    doubt.size = size;
    doubt.since = m_world.now();
    doubt.next = doubt.since + delayAfterFailure(doubt.attempts, randomFraction(m_world));
}

void DoubtfulFiles::keepListed(const QString& folder, const QList<FileEntry>& listing)
{
    std::set<QString> listed;
    for (const FileEntry& entry : listing)
        listed.insert(folder + entry.name);
    const WallTime old = m_world.now() - LongestAway;
    std::erase_if(m_files, [&](const auto& each) {
        return each.second.since < old
            || (each.first.startsWith(folder) && !listed.contains(each.first));
    });
}

bool DoubtfulFiles::isPutOff(const QString& path, std::optional<qint64> size) const
{
    const auto known = m_files.find(path);
    if (known == m_files.end() || known->second.size != size)
        return false;
    const WallTime now = m_world.now();
    // A clock that was set back must not put it off for long.
    return known->second.since <= now && now < known->second.next;
}

} // namespace mirror
