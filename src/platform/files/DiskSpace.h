#pragma once

#include <QUrl>

// Room on the volume that holds an item, in bytes. 0 where there is no such item, and for volumes
// that have no size.

/// What the user may still fill; what is kept for the administrator does not count.
[[nodiscard]] qint64 freeDiskSpace(const QUrl& url);

[[nodiscard]] qint64 totalDiskSpace(const QUrl& url);
