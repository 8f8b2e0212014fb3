#pragma once

#include <QString>
#include <QUrl>

// What the same work costs without the mirror. Each stops the process where it fails.

/// The milliseconds that SQLite alone takes to write the bills of that store into a new file, so
/// many in each transaction, every one on the disk when it ends.
[[nodiscard]] double writeBills(const QString& storeFile, int perTransaction);

/// The milliseconds that one curl takes to send so many files of so many bytes in all, and one
/// more to fetch them.
struct Transfer {
    double up = 0;
    double down = 0;
};
[[nodiscard]] Transfer transfer(const QUrl& root, qint64 bytes, int files);

/// Bytes of the server's answer to a listing of the folder, head and body.
[[nodiscard]] qint64 listingBytes(const QUrl& folder);

/// Makes a folder on the server.
void makeFolder(const QUrl& folder);
/// The one epoch's folder below that of a mirror.
[[nodiscard]] QUrl epochFolder(const QUrl& folder);

struct Contents {
    qint64 bytes = 0;
    int files = 0;
};
/// The record files below that of a mirror.
[[nodiscard]] Contents contentsBelow(const QUrl& folder);
