#include "ItemMove.h"

#include "Descriptor.h"
#include "ItemCopy.h"
#include "ItemIdentity.h"
#include "LocalPath.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// What is in a folder that must not be written into could not be removed.
void openFoldersIn(const std::string& folder)
{
    std::error_code error;
    fs::recursive_directory_iterator items(folder, error);
    while (!error && items != fs::recursive_directory_iterator()) {
        struct stat item { };
        if (::lstat(items->path().c_str(), &item) == 0 && S_ISDIR(item.st_mode))
            ::chmod(items->path().c_str(), S_IRWXU);
        items.increment(error);
    }
}

/// A folder of its own beside a destination, where a copy grows unseen. Removed with all that was
/// left in it.
class Workshop {
public:
    explicit Workshop(const fs::path& beside)
        : m_folder((beside.parent_path() / ".vexilo-move-XXXXXX").string())
    {
        m_isMade = ::mkdtemp(m_folder.data()) != nullptr;
        // Open from the beginning, because sync() is told of failures since then only.
        if (m_isMade)
            m_descriptor = Descriptor(::open(m_folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (!m_descriptor.isOpen())
            m_error = lastError();
    }

    ~Workshop()
    {
        std::error_code ignored;
        if (!m_isMade)
            return;
        openFoldersIn(m_folder);
        fs::remove_all(m_folder, ignored);
    }

    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    [[nodiscard]] std::error_code error() const { return m_error; }
    [[nodiscard]] fs::path item() const { return fs::path(m_folder) / "item"; }

    /// Returns when all that was written on its volume is on the disk.
    [[nodiscard]] std::error_code sync() const
    {
        return ::syncfs(m_descriptor.number()) == 0 ? std::error_code() : lastError();
    }

private:
    std::string m_folder;
    bool m_isMade = false;
    Descriptor m_descriptor;
    std::error_code m_error;
};

/// Another volume may be mounted within the very folder that is moved, or that folder at a second
/// place: it would be copied into itself.
std::error_code refuseToMoveIntoItself(const fs::path& source, const fs::path& destination)
{
    struct stat item { };
    if (::lstat(source.c_str(), &item) != 0)
        return lastError();
    std::error_code error;
    const fs::path into = fs::canonical(destination.parent_path(), error);
    if (error)
        return error;
    const std::vector<ItemIdentity> folders = identitiesUpward(into, error);
    if (std::find(folders.begin(), folders.end(), identityOf(item)) != folders.end())
        return std::make_error_code(std::errc::invalid_argument);
    return error;
}

std::error_code moveToAnotherVolume(const fs::path& source, const fs::path& destination)
{
    if (const auto error = refuseToMoveIntoItself(source, destination))
        return error;
    struct stat existing { };
    if (::lstat(destination.c_str(), &existing) == 0)
        return std::make_error_code(std::errc::file_exists);
    const Workshop workshop(destination);
    if (workshop.error())
        return workshop.error();
    ItemCopy copy;
    if (const auto error = copy.make(source, workshop.item()))
        return error;
    if (const auto error = renameWithoutReplacing(workshop.item(), AT_FDCWD, destination))
        return error;
    if (const auto error = copy.complete())
        return error;
    // On the disk before the original goes: a power cut may leave both, but never neither.
    if (const auto error = workshop.sync())
        return error;
    return copy.removeOriginal();
}

std::error_code renameByLink(
    const fs::path& source, int destinationFolder, const fs::path& destination)
{
    if (::linkat(AT_FDCWD, source.c_str(), destinationFolder, destination.c_str(), 0) != 0)
        return lastError();
    if (::unlink(source.c_str()) == 0)
        return {};
    const std::error_code error = lastError();
    ::unlinkat(destinationFolder, destination.c_str(), 0);
    return error;
}

/// Folders cannot have two names, nor can anything on some file systems.
bool isRefusedLink(const std::error_code& error)
{
    return error == std::errc::operation_not_permitted
        || error == std::errc::operation_not_supported || error == std::errc::function_not_supported
        || error == std::errc::too_many_links;
}

} // namespace

std::error_code moveItem(const fs::path& source, const fs::path& destination)
{
    if (!endsInName(source) || !endsInName(destination))
        return std::make_error_code(std::errc::invalid_argument);
    const std::error_code error = renameWithoutReplacing(source, AT_FDCWD, destination);
    if (error != std::errc::cross_device_link)
        return error;
    return moveToAnotherVolume(source, destination);
}

std::error_code renameWithoutReplacing(
    const fs::path& source, int destinationFolder, const fs::path& destination)
{
    if (::renameat2(
            AT_FDCWD, source.c_str(), destinationFolder, destination.c_str(), RENAME_NOREPLACE)
        == 0)
        return {};
    std::error_code error = lastError();
    if (error != std::errc::invalid_argument)
        return error;
    // Network file systems do not know the flag, but a link does not replace anything either.
    error = renameByLink(source, destinationFolder, destination);
    if (!isRefusedLink(error))
        return error;
    struct stat existing { };
    if (::fstatat(destinationFolder, destination.c_str(), &existing, AT_SYMLINK_NOFOLLOW) == 0)
        return std::make_error_code(std::errc::file_exists);
    if (::renameat(AT_FDCWD, source.c_str(), destinationFolder, destination.c_str()) != 0)
        return lastError();
    return {};
}
