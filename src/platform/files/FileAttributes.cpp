#include "FileAttributes.h"

#include "ByteCountFormatter.h"
#include "CurrentLocale.h"
#include "Diagnostics.h"
#include "LocalPath.h"

#include <array>
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>

namespace {

FileType typeOf(mode_t mode)
{
    switch (mode & S_IFMT) {
    case S_IFREG:
        return FileType::Regular;
    case S_IFDIR:
        return FileType::Directory;
    case S_IFLNK:
        return FileType::SymbolicLink;
    case S_IFIFO:
        return FileType::Pipe;
    case S_IFSOCK:
        return FileType::Socket;
    default:
        return FileType::Device;
    }
}

/// Nothing for a date that 64 bits of milliseconds cannot hold, which some file systems can.
std::optional<QDateTime> dateOf(const struct statx_timestamp& time)
{
    qint64 milliseconds = 0;
    if (__builtin_mul_overflow(time.tv_sec, 1000, &milliseconds)
        || __builtin_add_overflow(milliseconds, time.tv_nsec / 1'000'000, &milliseconds))
        return std::nullopt;
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
}

std::optional<QString> accountName(uid_t id)
{
    std::array<char, 4096> texts {};
    passwd entry {};
    passwd* found = nullptr;
    if (getpwuid_r(id, &entry, texts.data(), texts.size(), &found) != 0 || !found)
        return std::nullopt;
    return QString::fromLocal8Bit(entry.pw_name);
}

FileAttributes attributesOf(const struct statx& item)
{
    FileAttributes attributes {
        { FileAttributeKey::Type, typeOf(item.stx_mode) },
        { FileAttributeKey::PosixPermissions, quint64(item.stx_mode & ~S_IFMT) },
        { FileAttributeKey::ReferenceCount, quint64(item.stx_nlink) },
        { FileAttributeKey::OwnerAccountID, quint64(item.stx_uid) },
        { FileAttributeKey::GroupOwnerAccountID, quint64(item.stx_gid) },
        { FileAttributeKey::SystemFileNumber, quint64(item.stx_ino) },
    };
    // The system counts the blocks of a folder's own table, which tell nothing of its content.
    if (!S_ISDIR(item.stx_mode))
        attributes[FileAttributeKey::Size] = quint64(item.stx_size);
    if (const auto date = dateOf(item.stx_mtime))
        attributes[FileAttributeKey::ModificationDate] = *date;
    if (const auto date = dateOf(item.stx_btime); date && (item.stx_mask & STATX_BTIME))
        attributes[FileAttributeKey::CreationDate] = *date;
    if (const auto name = accountName(item.stx_uid))
        attributes[FileAttributeKey::OwnerAccountName] = *name;
    return attributes;
}

/// One attribute, or nothing where it is missing or of another type.
template <typename Value> std::optional<Value> valueOf(const QUrl& url, FileAttributeKey key)
{
    const std::optional<FileAttributes> all = attributes(url);
    if (!all)
        return std::nullopt;
    const auto found = all->find(key);
    const auto* value = found == all->end() ? nullptr : std::get_if<Value>(&found->second);
    return value ? std::optional<Value>(*value) : std::nullopt;
}

} // namespace

std::optional<FileAttributes> attributes(const QUrl& url)
{
    std::error_code error = std::make_error_code(std::errc::invalid_argument);
    if (const auto path = localPath(url)) {
        struct statx item { };
        const unsigned int wanted = STATX_BASIC_STATS | STATX_BTIME;
        if (::statx(AT_FDCWD, path->c_str(), AT_SYMLINK_NOFOLLOW, wanted, &item) == 0)
            return attributesOf(item);
        error = lastError();
    }
    printDiagnostic("FileAttribute error: " + errorText(url, error));
    return std::nullopt;
}

quint64 fileSize(const QUrl& url)
{
    return valueOf<quint64>(url, FileAttributeKey::Size).value_or(0);
}

QString fileSizeString(const QUrl& url) { return byteCountText(fileSize(url), numberLocale()); }

std::optional<QDateTime> creationDate(const QUrl& url)
{
    return valueOf<QDateTime>(url, FileAttributeKey::CreationDate);
}

std::optional<QDateTime> modifiedDate(const QUrl& url)
{
    return valueOf<QDateTime>(url, FileAttributeKey::ModificationDate);
}
