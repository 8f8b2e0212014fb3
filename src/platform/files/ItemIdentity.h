#pragma once

#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <vector>

// For this folder's sources only.

/// What an item is, by whichever path it is reached: a folder may be mounted at a second place.
struct ItemIdentity {
    dev_t device = 0;
    ino_t inode = 0;

    bool operator==(const ItemIdentity&) const = default;
};

[[nodiscard]] ItemIdentity identityOf(const struct stat& item);

/// The item's own (a link is not followed), and those of the folders that it lies in, up to the
/// root. The path is absolute, and only its last name may be a link's. An error where one of them
/// cannot be looked at.
[[nodiscard]] std::vector<ItemIdentity> identitiesUpward(
    const std::filesystem::path& path, std::error_code& error);
