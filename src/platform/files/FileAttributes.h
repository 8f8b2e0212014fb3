#pragma once

#include <QDateTime>
#include <QString>
#include <QUrl>

#include <map>
#include <optional>
#include <variant>

// What the file system knows of a file, a folder or a link. A link is not followed: these are its
// own attributes, so one that leads nowhere has some, too. Everything is read afresh.
//
// Where nothing can be read, each function prints one diagnostic line that begins with
// "FileAttribute error: ".

enum class FileType { Regular, Directory, SymbolicLink, Pipe, Socket, Device };

enum class FileAttributeKey {
    Size, ///< quint64, in bytes; folders have none
    Type, ///< FileType
    CreationDate, ///< QDateTime, in UTC; missing where the file system does not record it
    ModificationDate, ///< QDateTime, in UTC
    PosixPermissions, ///< quint64, the twelve bits of chmod
    ReferenceCount, ///< quint64, hard links
    OwnerAccountID, ///< quint64
    OwnerAccountName, ///< QString; missing where the machine knows none for the number
    GroupOwnerAccountID, ///< quint64
    SystemFileNumber, ///< quint64, the inode
};

using FileAttributeValue = std::variant<quint64, FileType, QDateTime, QString>;
using FileAttributes = std::map<FileAttributeKey, FileAttributeValue>;

/// Nothing where there is no such item or it cannot be reached.
[[nodiscard]] std::optional<FileAttributes> attributes(const QUrl& url);

/// In bytes; 0 for a folder and where nothing can be read.
[[nodiscard]] quint64 fileSize(const QUrl& url);

/// The size as a file manager shows it, in the user's locale: "1.5 kB".
[[nodiscard]] QString fileSizeString(const QUrl& url);

[[nodiscard]] std::optional<QDateTime> creationDate(const QUrl& url);
[[nodiscard]] std::optional<QDateTime> modifiedDate(const QUrl& url);
