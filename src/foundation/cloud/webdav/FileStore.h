#pragma once

#include "FileError.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>

class QIODevice;

namespace mirror {

/// What stands in a collection.
struct FileEntry {
    enum class Type { File, Collection };

    QString name; ///< one segment, decoded; never empty, "." or "..", and without a slash
    Type type = Type::File;
    std::optional<qint64> size; ///< of a file, in bytes, where the server tells

    friend bool operator==(const FileEntry&, const FileEntry&) = default;
};

/// What was fetched.
struct Download {
    qint64 size = 0; ///< bytes
    QByteArray sha256; ///< of them, 64 lower-case hexadecimal digits
};

/// Whether a deleted file goes to the trash of a server that has one.
enum class Trash { Use, Skip };

/// What became of a collection that was to be made.
enum class Making {
    Made,
    Refused, ///< 405: most likely something of that name exists; only a listing can tell
};

/// Immutable files in collections on a server: what every WebDAV server agrees on, and no more.
///
/// A path is relative to the store's root and not percent-encoded; its segments are parted by
/// single slashes, and none of them is "." or "..": another one is a broken contract. The path of a
/// collection ends in a slash, the root's is empty.
///
/// Each call blocks until the server has answered, so the main thread makes none. One store belongs
/// to one thread.
class FileStore {
public:
    FileStore() = default;
    FileStore(const FileStore&) = delete;
    FileStore& operator=(const FileStore&) = delete;
    virtual ~FileStore() = default;

    /// What stands directly in the collection, in the server's order. Only a listing that is whole
    /// beyond doubt is one; everything else is an error, never an empty list.
    [[nodiscard]] virtual Outcome<QList<FileEntry>> list(const QString& collection) = 0;

    /// Writes the file's bytes to the device, which is open for writing, as they come. A file of
    /// more than `limit` bytes, or one that ends early, is an error, and the device may hold a part
    /// of it. Where the server announces no length, its end cannot be told from a break, so whether
    /// these are all the bytes and the right ones, only the hash tells.
    [[nodiscard]] virtual Outcome<Download> get(
        const QString& file, QIODevice& device, qint64 limit)
        = 0;

    /// Stores the bytes under the path, over what stood there. After an error a part of them may
    /// stand there.
    [[nodiscard]] virtual Outcome<> put(const QString& file, const QByteArray& bytes) = 0;

    /// Makes one collection; where the one around it is missing, that is a conflict.
    [[nodiscard]] virtual Outcome<Making> makeCollection(const QString& collection) = 0;

    /// Deletes a file, or a collection with all that is in it, of which after an error a part may
    /// be left. What is not there is "not found".
    [[nodiscard]] virtual Outcome<> remove(const QString& path, Trash trash) = 0;

    /// The time by the server's clock, UTC, in its newest successful answer, where it was given.
    [[nodiscard]] virtual std::optional<QDateTime> serverDate() const = 0;
};

} // namespace mirror
