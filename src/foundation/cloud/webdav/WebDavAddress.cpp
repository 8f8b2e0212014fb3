#include "WebDavAddress.h"

#include "Diagnostics.h"

#include <QHostAddress>

#include <algorithm>

namespace mirror {

namespace {

bool isPlainSegment(const QString& segment)
{
    return !segment.isEmpty() && segment != QLatin1String(".") && segment != QLatin1String("..")
        && !segment.contains(QLatin1Char('/')) && !segment.contains(QChar(QChar::Null));
}

bool isLoopback(const QString& host)
{
    return host == QLatin1String("localhost") || QHostAddress(host).isLoopback();
}

QByteArray encoded(const QString& path)
{
    const bool isCollection = path.endsWith(QLatin1Char('/'));
    QByteArrayList segments;
    for (const QString& segment : path.chopped(isCollection ? 1 : 0).split(QLatin1Char('/'))) {
        if (!isPlainSegment(segment))
            fatalError("A path in a file store has an empty segment, or one of dots.");
        segments.append(QUrl::toPercentEncoding(segment));
    }
    return segments.join('/') + (isCollection ? "/" : "");
}

} // namespace

WebDavAddress::WebDavAddress(const QUrl& root)
    : m_root(root.adjusted(QUrl::RemoveUserInfo | QUrl::RemoveQuery | QUrl::RemoveFragment))
{
    const QString path = m_root.path(QUrl::FullyEncoded);
    if (!path.endsWith(QLatin1Char('/')))
        m_root.setPath(path + QLatin1Char('/'), QUrl::StrictMode);
}

bool WebDavAddress::isSecure() const
{
    if (m_root.host().isEmpty())
        return false;
    return m_root.scheme() == QLatin1String("https")
        || (m_root.scheme() == QLatin1String("http") && isLoopback(m_root.host()));
}

QUrl WebDavAddress::url(const QString& path) const
{
    if (path.isEmpty())
        return m_root;
    return QUrl::fromEncoded(m_root.toEncoded() + encoded(path), QUrl::StrictMode);
}

QString collectionPath(const QString& path)
{
    return path.isEmpty() || path.endsWith(QLatin1Char('/')) ? path : path + QLatin1Char('/');
}

std::optional<QStringList> pathSegments(const QUrl& url)
{
    QStringList segments;
    const QStringList parts
        = url.path(QUrl::FullyEncoded).split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (const QString& part : parts)
        segments.append(QUrl::fromPercentEncoding(part.toUtf8()));
    if (!std::all_of(segments.cbegin(), segments.cend(), isPlainSegment))
        return std::nullopt;
    return segments;
}

} // namespace mirror
