#include "ItemCopy.h"

#include "LocalPath.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr int openFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// The copy belongs to the user, so it does not run as anybody else.
mode_t copiedPermissions(const CopiedItem& item) { return item.mode & 01777; }

std::error_code copyAttributes(const CopiedItem& item, const fs::path& copy)
{
    if (!S_ISLNK(item.mode) && ::chmod(copy.c_str(), copiedPermissions(item)) != 0)
        return lastError();
    if (::utimensat(AT_FDCWD, copy.c_str(), item.times.data(), AT_SYMLINK_NOFOLLOW) != 0)
        return lastError();
    return {};
}

bool isUnchanged(const struct stat& now, const CopiedItem& item)
{
    if (identityOf(now) != item.identity || (now.st_mode & S_IFMT) != (item.mode & S_IFMT))
        return false;
    // The removal itself changes the dates of folders.
    const timespec& changed = item.times[1];
    return S_ISDIR(item.mode)
        || (now.st_size == item.size && now.st_mtim.tv_sec == changed.tv_sec
            && now.st_mtim.tv_nsec == changed.tv_nsec);
}

std::error_code removeItem(int parent, const CopiedItem& item);

std::error_code removeContent(int folder, const CopiedItem& item)
{
    for (const CopiedItem& inner : item.content) {
        if (const auto error = removeItem(folder, inner))
            return error;
    }
    return {};
}

std::error_code removeFolder(int parent, const CopiedItem& item)
{
    const Descriptor folder(::openat(parent, item.name.c_str(), openFolderFlags));
    if (!folder.isOpen())
        return lastError();
    // A folder that must not be written into can move as well as any other. Where it is somebody
    // else's, this fails, and the removal after it.
    const bool isClosed = (item.mode & S_IRWXU) != S_IRWXU;
    if (isClosed)
        ::fchmod(folder.number(), (item.mode & 07777) | S_IRWXU);
    std::error_code error = removeContent(folder.number(), item);
    if (!error && ::unlinkat(parent, item.name.c_str(), AT_REMOVEDIR) != 0)
        error = lastError();
    if (error && isClosed)
        ::fchmod(folder.number(), item.mode & 07777);
    return error;
}

std::error_code removeItem(int parent, const CopiedItem& item)
{
    struct stat now { };
    if (::fstatat(parent, item.name.c_str(), &now, AT_SYMLINK_NOFOLLOW) != 0)
        return errno == ENOENT ? std::error_code() : lastError();
    if (!isUnchanged(now, item))
        return std::make_error_code(std::errc::device_or_resource_busy);
    if (S_ISDIR(item.mode))
        return removeFolder(parent, item);
    return ::unlinkat(parent, item.name.c_str(), 0) == 0 ? std::error_code() : lastError();
}

} // namespace

std::error_code ItemCopy::make(const fs::path& source, const fs::path& copy)
{
    struct stat workshop { };
    if (::stat(copy.parent_path().c_str(), &workshop) != 0)
        return lastError();
    m_workshop = identityOf(workshop);
    if (const auto error = copyData(source, copy, m_original))
        return error;
    m_original.name = source.string();
    if (!S_ISDIR(m_original.mode))
        return copyAttributes(m_original, copy);
    m_folder = Descriptor(::open(copy.c_str(), openFolderFlags));
    return m_folder.isOpen() ? std::error_code() : lastError();
}

std::error_code ItemCopy::complete() const
{
    if (!m_folder.isOpen())
        return {};
    if (::futimens(m_folder.number(), m_original.times.data()) != 0
        || ::fchmod(m_folder.number(), copiedPermissions(m_original)) != 0)
        return lastError();
    return {};
}

std::error_code ItemCopy::removeOriginal() const { return removeItem(AT_FDCWD, m_original); }

/// The attributes last, because writing into a folder changes its date, and it may be one that must
/// not be written into.
std::error_code ItemCopy::copyItem(const fs::path& source, const fs::path& copy, CopiedItem& item)
{
    const std::error_code error = copyData(source, copy, item);
    return error ? error : copyAttributes(item, copy);
}

std::error_code ItemCopy::copyData(const fs::path& source, const fs::path& copy, CopiedItem& item)
{
    // Looked at before it is read: what changes meanwhile then differs from what is remembered.
    struct stat now { };
    if (::lstat(source.c_str(), &now) != 0)
        return lastError();
    item = { source.filename().string(), identityOf(now), now.st_mode, now.st_size,
        { now.st_atim, now.st_mtim }, {} };
    std::error_code error;
    if (S_ISLNK(now.st_mode))
        fs::copy_symlink(source, copy, error);
    else if (S_ISREG(now.st_mode))
        fs::copy_file(source, copy, error);
    else if (S_ISDIR(now.st_mode))
        error = copyContent(source, copy, item);
    else
        error = std::make_error_code(std::errc::operation_not_supported);
    return error;
}

std::error_code ItemCopy::copyContent(
    const fs::path& source, const fs::path& copy, CopiedItem& folder)
{
    // It would be copied into itself for ever.
    if (folder.identity == m_workshop)
        return std::make_error_code(std::errc::invalid_argument);
    if (::mkdir(copy.c_str(), S_IRWXU) != 0)
        return lastError();
    std::error_code error;
    fs::directory_iterator entries(source, error);
    while (!error && entries != fs::directory_iterator()) {
        const fs::path name = entries->path().filename();
        error = copyItem(source / name, copy / name, folder.content.emplace_back());
        if (!error)
            entries.increment(error);
    }
    return error;
}
