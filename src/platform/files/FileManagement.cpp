#include "FileManagement.h"

#include "Diagnostics.h"
#include "ItemMove.h"
#include "LocalPath.h"
#include "Trash.h"

namespace fs = std::filesystem;

namespace {

bool removeForGood(const fs::path& path)
{
    // A root would be emptied before the system refuses to remove it.
    if (!endsInName(path))
        return false;
    std::error_code error;
    const auto removed = fs::remove_all(path, error);
    return !error && removed > 0;
}

} // namespace

bool isFolder(const QUrl& url)
{
    std::error_code error;
    const auto path = localPath(url);
    return path && fs::is_directory(*path, error);
}

bool fileExists(const QUrl& url)
{
    std::error_code error;
    const auto path = localPath(url);
    return path && fs::exists(*path, error);
}

bool deleteFile(const QUrl& url, bool toTrash)
{
    const auto path = localPath(url);
    if (!toTrash)
        return path && removeForGood(*path);
    if (path)
        (void)moveToTrash(*path);
    return true;
}

bool renameFile(const QUrl& source, const QUrl& destination)
{
    const auto from = localPath(source);
    const auto to = localPath(destination);
    const std::error_code error
        = from && to ? moveItem(*from, *to) : std::make_error_code(std::errc::invalid_argument);
    if (!error)
        return true;
    printDiagnostic("error: " + source.toEncoded(QUrl::RemoveUserInfo).toStdString() + " to "
        + errorText(destination, error));
    return false;
}
