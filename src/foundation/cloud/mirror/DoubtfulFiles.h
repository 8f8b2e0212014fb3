#pragma once

#include "MirrorWorld.h"

#include <map>
#include <optional>

namespace mirror {

/// Files that could not be read while others could: each is tried again after a while that grows,
/// or at once where it is listed with another size.
class DoubtfulFiles {
public:
    explicit DoubtfulFiles(const MirrorWorld& world)
        : m_world(world)
    {
    }

    void add(const QString& path, std::optional<qint64> size);
    void remove(const QString& path) { m_files.erase(path); }
    /// Those of the folder that are not in the listing are gone; so is what was not tried for long.
    void keepListed(const QString& folder, const QList<FileEntry>& listing);

    [[nodiscard]] bool isPutOff(const QString& path, std::optional<qint64> size) const;
    [[nodiscard]] int count() const { return int(m_files.size()); }

private:
    struct Doubt {
        std::optional<qint64> size; // as listed
        int attempts = 0;
        WallTime since;
        WallTime next;
    };

    const MirrorWorld& m_world;
    std::map<QString, Doubt> m_files; // by path
};

} // namespace mirror
