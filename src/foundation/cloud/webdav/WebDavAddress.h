#pragma once

#include <QStringList>
#include <QUrl>

#include <optional>

namespace mirror {

/// Where a WebDAV folder is, and what its files are called there.
class WebDavAddress {
public:
    /// A user, password, query and fragment in the URL are dropped; a slash is added where it ends
    /// in none.
    explicit WebDavAddress(const QUrl& root);

    /// Whether credentials may be sent there: over TLS, or to this machine.
    [[nodiscard]] bool isSecure() const;

    /// The URL of a path as FileStore has it. Nothing in the result can lead out of the root.
    [[nodiscard]] QUrl url(const QString& path) const;

private:
    QUrl m_root;
};

/// The path with the slash that a collection's ends in; the root's stays empty.
[[nodiscard]] QString collectionPath(const QString& path);

/// The decoded segments of a URL's path, without empty ones. Nothing where one of them is "." or
/// "..", or holds a slash or a zero: such a path is not what it seems.
[[nodiscard]] std::optional<QStringList> pathSegments(const QUrl& url);

} // namespace mirror
