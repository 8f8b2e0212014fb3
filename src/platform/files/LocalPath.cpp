#include "LocalPath.h"

#include <cerrno>

std::optional<std::filesystem::path> localPath(const QUrl& url)
{
    const bool isHere = url.host().isEmpty() || url.host() == QLatin1String("localhost");
    if (!url.isLocalFile() || !isHere || url.hasQuery() || url.hasFragment())
        return std::nullopt;
    // QUrl::toLocalFile() would put a replacement for each byte that is not UTF-8.
    QByteArray bytes = QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
    if (!bytes.startsWith('/') || bytes.contains('\0'))
        return std::nullopt;
    while (bytes.size() > 1 && bytes.endsWith('/'))
        bytes.chop(1);
    return std::filesystem::path(bytes.toStdString());
}

bool endsInName(const std::filesystem::path& path)
{
    const std::filesystem::path name = path.filename();
    return !name.empty() && name != "." && name != "..";
}

std::string errorText(const QUrl& url, const std::error_code& error)
{
    return url.toEncoded(QUrl::RemoveUserInfo).toStdString() + ": " + error.message();
}

std::error_code lastError() { return { errno, std::generic_category() }; }
