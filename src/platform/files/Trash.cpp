#include "Trash.h"

#include "Descriptor.h"
#include "ItemIdentity.h"
#include "ItemMove.h"
#include "LocalPath.h"

#include <QByteArray>
#include <QDateTime>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace {

// Held open, so that nobody can put another folder in its place meanwhile.
struct TrashFolder {
    Descriptor folder;
    Descriptor files;
    Descriptor info;
    std::error_code error;
};

/// To pass through only: that needs no permission to list what is in it.
constexpr int openFolderFlags = O_PATH | O_DIRECTORY | O_CLOEXEC;
constexpr int openOwnFolderFlags = openFolderFlags | O_NOFOLLOW;

/// Made where it is missing, for the user alone.
Descriptor makeFolder(const Descriptor& parent, const std::string& name)
{
    if (::mkdirat(parent.number(), name.c_str(), S_IRWXU) != 0 && errno != EEXIST)
        return Descriptor();
    return Descriptor(::openat(parent.number(), name.c_str(), openOwnFolderFlags));
}

TrashFolder failed(const std::error_code& error) { return { {}, {}, {}, error }; }

TrashFolder openTrash(Descriptor folder)
{
    if (!folder.isOpen())
        return failed(lastError());
    TrashFolder trash { std::move(folder), {}, {}, {} };
    trash.files = makeFolder(trash.folder, "files");
    if (trash.files.isOpen())
        trash.info = makeFolder(trash.folder, "info");
    if (!trash.files.isOpen() || !trash.info.isOpen())
        trash.error = lastError();
    return trash;
}

std::error_code makePrivateFolders(const fs::path& path)
{
    if (::mkdir(path.c_str(), S_IRWXU) == 0 || errno == EEXIST)
        return {};
    if (errno != ENOENT || !path.has_relative_path())
        return lastError();
    if (const auto error = makePrivateFolders(path.parent_path()))
        return error;
    return ::mkdir(path.c_str(), S_IRWXU) == 0 ? std::error_code() : lastError();
}

/// The folder for data, as bytes: a home need not be UTF-8. Empty where the user has none.
fs::path dataFolder()
{
    fs::path data = qgetenv("XDG_DATA_HOME").toStdString();
    if (data.is_absolute())
        return data;
    const fs::path home = qgetenv("HOME").toStdString();
    return home.is_absolute() ? home / ".local/share" : fs::path();
}

/// A user may have it elsewhere: links are followed.
TrashFolder openHomeTrash()
{
    const fs::path data = dataFolder();
    if (data.empty())
        return failed(std::make_error_code(std::errc::no_such_file_or_directory));
    const fs::path path = data / "Trash";
    if (const auto error = makePrivateFolders(path))
        return failed(error);
    return openTrash(Descriptor(::open(path.c_str(), openFolderFlags)));
}

/// Whether others could have made it to see what the user throws away.
bool isOwn(const Descriptor& folder)
{
    struct stat status { };
    return ::fstat(folder.number(), &status) == 0 && status.st_uid == ::geteuid();
}

bool isSticky(const Descriptor& folder)
{
    struct stat status { };
    return ::fstat(folder.number(), &status) == 0 && (status.st_mode & S_ISVTX) != 0;
}

TrashFolder openOwnTrash(const Descriptor& parent, const std::string& name)
{
    Descriptor folder = makeFolder(parent, name);
    if (folder.isOpen() && !isOwn(folder))
        return failed(std::make_error_code(std::errc::permission_denied));
    return openTrash(std::move(folder));
}

/// The user's folder in the trash that an administrator has set up for all, or else one that is
/// the user's alone.
TrashFolder openVolumeTrash(const fs::path& top)
{
    const std::string user = std::to_string(::geteuid());
    const Descriptor topFolder(::open(top.c_str(), openFolderFlags));
    const Descriptor shared(::openat(topFolder.number(), ".Trash", openOwnFolderFlags));
    if (shared.isOpen() && isSticky(shared)) {
        TrashFolder trash = openOwnTrash(shared, user);
        if (!trash.error)
            return trash;
    }
    return openOwnTrash(topFolder, ".Trash-" + user);
}

bool areOnOneMount(const fs::path& one, const fs::path& other)
{
    struct statx first { };
    struct statx second { };
    if (::statx(AT_FDCWD, one.c_str(), 0, STATX_MNT_ID, &first) != 0
        || ::statx(AT_FDCWD, other.c_str(), 0, STATX_MNT_ID, &second) != 0)
        return false;
    return first.stx_mnt_id == second.stx_mnt_id && first.stx_dev_major == second.stx_dev_major
        && first.stx_dev_minor == second.stx_dev_minor;
}

/// Where the folder's volume is mounted.
fs::path topOf(const fs::path& folder)
{
    fs::path top = folder;
    while (top.has_relative_path() && areOnOneMount(top, top.parent_path()))
        top = top.parent_path();
    return top;
}

/// A file name for the trash: the item's own first, and with a number while that is taken. It
/// leaves room for the ending of the file that describes it, and no half of a character.
std::string trashedName(const std::string& name, int attempt)
{
    constexpr std::size_t longest = NAME_MAX - sizeof ".trashinfo" + 1;
    const std::string number = attempt == 1 ? std::string() : '.' + std::to_string(attempt);
    std::size_t length = std::min(name.size(), longest - number.size());
    const auto continuesCharacter = [&name](std::size_t at) {
        return at < name.size() && (static_cast<unsigned char>(name[at]) & 0xC0) == 0x80;
    };
    for (int back = 0; back < 3 && length > 1 && continuesCharacter(length); ++back)
        --length;
    return name.substr(0, length) + number;
}

std::string trashInfo(const fs::path& oldPlace)
{
    const QByteArray path = QByteArray::fromStdString(oldPlace.string()).toPercentEncoding("/");
    const QByteArray date = QDateTime::currentDateTime().toString(Qt::ISODate).toUtf8();
    const QByteArray info = "[Trash Info]\nPath=" + path + "\nDeletionDate=" + date + '\n';
    return info.toStdString();
}

/// Returns when it is on the disk.
std::error_code writeAndClose(Descriptor file, const std::string& content)
{
    if (!file.isOpen())
        return lastError();
    const ssize_t written = ::write(file.number(), content.data(), content.size());
    if (written < 0)
        return lastError();
    if (written != static_cast<ssize_t>(content.size()))
        return std::make_error_code(std::errc::no_space_on_device);
    return ::fsync(file.number()) == 0 ? file.close() : lastError();
}

/// Writes a file that is not there yet, whole or not at all.
std::error_code writeNewFile(
    const Descriptor& folder, const std::string& name, const std::string& content)
{
    const int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    Descriptor file(::openat(folder.number(), name.c_str(), flags, S_IRUSR | S_IWUSR));
    const bool isMade = file.isOpen();
    const std::error_code error = writeAndClose(std::move(file), content);
    if (error && isMade)
        ::unlinkat(folder.number(), name.c_str(), 0);
    return error;
}

/// What is to be thrown away.
struct TrashedItem {
    fs::path path; ///< without links but in its last name
    std::vector<ItemIdentity> identities; ///< its own, and those of the folders that it lies in
};

bool liesIn(const TrashedItem& item, const Descriptor& folder)
{
    struct stat status { };
    return ::fstat(folder.number(), &status) != 0
        || std::find(item.identities.begin(), item.identities.end(), identityOf(status))
        != item.identities.end();
}

/// What is in the trash already would lose its old place, and the trash cannot hold itself.
bool isInTrash(const TrashedItem& item, const TrashFolder& trash)
{
    return liesIn(item, trash.folder) || liesIn(item, trash.files) || liesIn(item, trash.info);
}

std::error_code moveInto(
    const TrashFolder& trash, const TrashedItem& item, const fs::path& oldPlace)
{
    if (trash.error)
        return trash.error;
    if (isInTrash(item, trash))
        return std::make_error_code(std::errc::invalid_argument);
    const std::string info = trashInfo(oldPlace);
    std::error_code error;
    int attempt = 0;
    do {
        const std::string name = trashedName(item.path.filename().string(), ++attempt);
        const std::string infoName = name + ".trashinfo";
        // The description first, and on the disk: its name reserves the item's, and no power cut
        // leaves an item of which nobody knows the old place.
        error = writeNewFile(trash.info, infoName, info);
        if (error)
            continue;
        error = renameWithoutReplacing(item.path, trash.files.number(), name);
        if (error)
            ::unlinkat(trash.info.number(), infoName.c_str(), 0);
    } while (error == std::errc::file_exists);
    return error;
}

} // namespace

std::error_code moveToTrash(const fs::path& path)
{
    if (!endsInName(path))
        return std::make_error_code(std::errc::invalid_argument);
    std::error_code error;
    const fs::path folder = fs::canonical(path.parent_path(), error);
    if (error)
        return error;
    TrashedItem item { folder / path.filename(), {} };
    item.identities = identitiesUpward(item.path, error);
    if (error)
        return error;
    const TrashFolder home = openHomeTrash();
    error = moveInto(home, item, item.path);
    if (!home.error && error != std::errc::cross_device_link)
        return error;
    const fs::path top = topOf(folder);
    return moveInto(openVolumeTrash(top), item, item.path.lexically_relative(top));
}
