#pragma once

#include "Descriptor.h"
#include "ItemIdentity.h"

#include <array>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <vector>

/// An item as it was when it was copied.
struct CopiedItem {
    std::string name; ///< in the folder that holds it; the whole path of the outermost item
    ItemIdentity identity;
    mode_t mode = 0; ///< type and permissions
    off_t size = 0;
    std::array<timespec, 2> times {}; ///< of the last access and the last change of the content
    std::vector<CopiedItem> content; ///< of a folder
};

/// The copy of a file, a link or a folder that is to replace its original. It is made at one place,
/// may then be moved to another, is completed there, and only then is the original removed. For
/// this folder's sources only.
class ItemCopy {
public:
    /// Copies the item with its permissions and dates; the copy belongs to the user. Nothing is at
    /// the copy's path yet. Where it fails, a part of the copy is left.
    ///
    /// The copy of a folder is not complete: it lets its owner write into it, because no other
    /// folder could be moved.
    [[nodiscard]] std::error_code make(
        const std::filesystem::path& source, const std::filesystem::path& copy);

    /// Gives the copy of a folder the permissions and the date that it lacks, wherever it is now.
    [[nodiscard]] std::error_code complete() const;

    /// Removes what was copied, and nothing else: the first item that was changed or replaced
    /// since, or cannot be removed, ends the removal with an error, and so does a folder into which
    /// something was put. What is no longer there is no error.
    [[nodiscard]] std::error_code removeOriginal() const;

private:
    std::error_code copyItem(
        const std::filesystem::path& source, const std::filesystem::path& copy, CopiedItem& item);
    std::error_code copyData(
        const std::filesystem::path& source, const std::filesystem::path& copy, CopiedItem& item);
    std::error_code copyContent(
        const std::filesystem::path& source, const std::filesystem::path& copy, CopiedItem& folder);

    ItemIdentity m_workshop; // the folder in which the copy grows
    CopiedItem m_original;
    Descriptor m_folder; // the copy of a folder
};
