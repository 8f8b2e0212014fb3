#include "DiskSpace.h"

#include "LocalPath.h"

#include <utility>

namespace {

std::filesystem::space_info spaceOf(const QUrl& url)
{
    const auto path = localPath(url);
    std::error_code error;
    const std::filesystem::space_info space
        = path ? std::filesystem::space(*path, error) : std::filesystem::space_info();
    return error ? std::filesystem::space_info() : space;
}

qint64 signedBytes(std::uintmax_t bytes)
{
    return std::in_range<qint64>(bytes) ? static_cast<qint64>(bytes) : 0;
}

} // namespace

qint64 freeDiskSpace(const QUrl& url) { return signedBytes(spaceOf(url).available); }

qint64 totalDiskSpace(const QUrl& url) { return signedBytes(spaceOf(url).capacity); }
