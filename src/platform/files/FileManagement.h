#pragma once

#include <QUrl>

// Files and folders, by their addresses. A name may hold any bytes: see LocalPath.h. What is no
// file of this machine does not exist, and every change of it fails.

/// Whether there is a folder; a link is followed.
[[nodiscard]] bool isFolder(const QUrl& url);

/// Whether there is any item. A link is followed, so one that leads nowhere is none; an item in a
/// folder that may not be searched is none, either.
[[nodiscard]] bool fileExists(const QUrl& url);

/// Removes a file, a link (not what it leads to) or a folder with all that is in it.
///
/// For good: false where that failed, or there was nothing; a folder may then be half gone. The
/// root and paths that end in "." or ".." are refused.
///
/// To the user's trash: always true. What cannot be moved there stays where it is, and only a
/// permanent removal reports failure.
bool deleteFile(const QUrl& url, bool toTrash);

/// Moves a file, a link or a folder, to another volume, too: to do that it is copied with
/// its permissions and date, belongs to the user then, and appears at its destination only as a
/// whole; once the copy is on the disk, the original is removed.
///
/// Never replaces anything, as far as the file system can promise that: where it can only be looked
/// at first, what appears in between may be replaced.
///
/// Where it fails, a diagnostic line that begins with "error:" says why, the result is false, and
/// everything stays as it was. One case is not undone: the whole copy is at its destination, but
/// cannot be brought to the disk, or its original cannot be removed or was changed since. Both then
/// stay, of a folder's original what was not removed yet; what was changed or added there is never
/// removed.
bool renameFile(const QUrl& source, const QUrl& destination);
