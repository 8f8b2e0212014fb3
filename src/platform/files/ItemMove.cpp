#include "ItemMove.h"

#include "LocalPath.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

std::error_code copyItem(const fs::path& source, const fs::path& copy);

std::error_code copyContent(const fs::path& source, const fs::path& copy)
{
    std::error_code error;
    fs::create_directory(copy, error);
    fs::directory_iterator entries;
    if (!error)
        entries = fs::directory_iterator(source, error);
    while (!error && entries != fs::directory_iterator()) {
        error = copyItem(entries->path(), copy / entries->path().filename());
        if (!error)
            entries.increment(error);
    }
    return error;
}

/// Last of all, because writing into a folder changes its date, and it may be one that must not be
/// written into. The copy belongs to the user, so it does not run as anybody else.
std::error_code copyAttributes(const struct stat& original, const fs::path& copy)
{
    constexpr mode_t permissions = 01777;
    if (!S_ISLNK(original.st_mode) && ::chmod(copy.c_str(), original.st_mode & permissions) != 0)
        return lastError();
    const std::array times { original.st_atim, original.st_mtim };
    if (::utimensat(AT_FDCWD, copy.c_str(), times.data(), AT_SYMLINK_NOFOLLOW) != 0)
        return lastError();
    return {};
}

std::error_code copyItem(const fs::path& source, const fs::path& copy)
{
    struct stat original { };
    if (::lstat(source.c_str(), &original) != 0)
        return lastError();
    std::error_code error;
    if (S_ISLNK(original.st_mode))
        fs::copy_symlink(source, copy, error);
    else if (S_ISREG(original.st_mode))
        fs::copy_file(source, copy, error);
    else if (S_ISDIR(original.st_mode))
        error = copyContent(source, copy);
    else
        error = std::make_error_code(std::errc::operation_not_supported);
    return error ? error : copyAttributes(original, copy);
}

/// A folder of its own beside a destination, where a copy grows unseen. Removed with all that was
/// left in it.
class Workshop {
public:
    explicit Workshop(const fs::path& beside)
        : m_folder((beside.parent_path() / ".vexilo-move-XXXXXX").string())
    {
        if (!::mkdtemp(m_folder.data()))
            m_error = lastError();
    }

    ~Workshop()
    {
        std::error_code ignored;
        if (!m_error)
            fs::remove_all(m_folder, ignored);
    }

    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    [[nodiscard]] std::error_code error() const { return m_error; }
    [[nodiscard]] fs::path item() const { return fs::path(m_folder) / "item"; }

private:
    std::string m_folder;
    std::error_code m_error;
};

/// Another volume may be mounted within the very folder that is moved: it would be copied into
/// itself for ever.
std::error_code refuseToMoveIntoItself(const fs::path& source, const fs::path& destination)
{
    std::error_code error;
    const fs::path from = fs::canonical(source.parent_path(), error) / source.filename();
    if (error)
        return error;
    const fs::path into = fs::canonical(destination.parent_path(), error);
    if (error)
        return error;
    const auto differ = std::mismatch(from.begin(), from.end(), into.begin(), into.end());
    return differ.first == from.end() ? std::make_error_code(std::errc::invalid_argument) : error;
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
    if (const auto error = copyItem(source, workshop.item()))
        return error;
    if (const auto error = renameWithoutReplacing(workshop.item(), AT_FDCWD, destination))
        return error;
    std::error_code error;
    fs::remove_all(source, error);
    return error;
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
    const std::error_code error = lastError();
    if (error != std::errc::invalid_argument)
        return error;
    // Network file systems do not know the flag: look first, then rename.
    struct stat existing { };
    if (::fstatat(destinationFolder, destination.c_str(), &existing, AT_SYMLINK_NOFOLLOW) == 0)
        return std::make_error_code(std::errc::file_exists);
    if (::renameat(AT_FDCWD, source.c_str(), destinationFolder, destination.c_str()) != 0)
        return lastError();
    return {};
}
