#pragma once

#include <filesystem>
#include <system_error>

/// Moves a file, a link or a folder, by copying it where the destination is on another volume. An
/// existing destination is an error, whatever it is. For this folder's sources only.
[[nodiscard]] std::error_code moveItem(
    const std::filesystem::path& source, const std::filesystem::path& destination);

/// Gives an item another name on the same volume, and does not replace one. That is certain where
/// the file system knows RENAME_NOREPLACE, and for what may have two names for a moment; what
/// neither holds for is looked at first. The destination is relative to the folder of the
/// descriptor; AT_FDCWD where it is absolute.
[[nodiscard]] std::error_code renameWithoutReplacing(const std::filesystem::path& source,
    int destinationFolder, const std::filesystem::path& destination);
