#pragma once

#include "CloudAccount.h"

namespace mirror {

/// A WebDAV address as users and desktops write it.
struct AccountAddress {
    QUrl root; ///< http or https, ends in a slash; user, password, query and fragment are dropped
    QString user; ///< from the address, decoded; often empty
    bool hasPassword = false;
};

/// Reads an address with https, http or what GVfs calls them, davs and dav. Percent-encoding stays
/// as it is. Nothing where it is no such address, or one that leads through "." or "..".
[[nodiscard]] std::optional<AccountAddress> readAddress(const QString& text);

/// The user's account there, or why it cannot be one: a sentence about the subject.
[[nodiscard]] AccountFinding accountAt(const QUrl& root, const QString& user,
    WebDavAccount::SelfSigned selfSigned, const QString& subject);

} // namespace mirror
