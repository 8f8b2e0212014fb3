#pragma once

#include <filesystem>
#include <system_error>

/// Moves a file, a link (not what it leads to) or a folder to the user's trash, where file managers
/// find it with its old place and the time. The path is absolute. Where it fails, the item stays
/// where it is, and so does what is a trash or in it already. For this folder's sources only.
///
/// By the freedesktop.org trash specification 1.0: to the home trash where renaming does it; from
/// other volumes to the trash of the volume's top folder, so nothing is ever copied. QFile's own
/// way writes old places that cannot be read back (a line end in a name, a path of another
/// volume), fails for links that lead nowhere and names that are not UTF-8, and never ends for
/// names of more than 245 bytes.
[[nodiscard]] std::error_code moveToTrash(const std::filesystem::path& path);
