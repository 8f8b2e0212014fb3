#include "ItemIdentity.h"

#include "LocalPath.h"

namespace fs = std::filesystem;

ItemIdentity identityOf(const struct stat& item) { return { item.st_dev, item.st_ino }; }

std::vector<ItemIdentity> identitiesUpward(const fs::path& path, std::error_code& error)
{
    std::vector<ItemIdentity> identities;
    fs::path place = path;
    while (true) {
        struct stat item { };
        if (::lstat(place.c_str(), &item) != 0) {
            error = lastError();
            return {};
        }
        identities.push_back(identityOf(item));
        if (!place.has_relative_path())
            return identities;
        place = place.parent_path();
    }
}
