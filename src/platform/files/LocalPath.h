#pragma once

#include <QUrl>

#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

// From addresses to paths, for this folder's sources only.

/// The path that a file's address stands for, byte by byte: a name need not be UTF-8, and its bytes
/// stand percent-encoded in the address. Slashes at the end are left out, so that the address of a
/// link with one names the link too, not what it leads to. Nothing for what is no absolute path on
/// this machine, and for what a path could only be the beginning of: an address with a null byte, a
/// query or a fragment.
[[nodiscard]] std::optional<std::filesystem::path> localPath(const QUrl& url);

/// Whether the path ends in a name that can be moved or removed: not the root, "." or "..".
[[nodiscard]] bool endsInName(const std::filesystem::path& path);

/// The address and what the system says, in one line whatever the name: percent-encoded.
[[nodiscard]] std::string errorText(const QUrl& url, const std::error_code& error);

/// What the last system call set.
[[nodiscard]] std::error_code lastError();
