#pragma once

#include "CloudAccount.h"

#include <QDBusObjectPath>
#include <QMap>
#include <QVariantMap>

namespace mirror {

/// Objects of a bus service: their interfaces by name, and of these the properties.
using BusObjects = QMap<QDBusObjectPath, QMap<QString, QVariantMap>>;

/// One of the desktop's online accounts that keeps files on a WebDAV server.
struct OnlineAccount {
    QString path; ///< on the bus
    QString name; ///< for people: as a rule user@server
    /// The account, or why it does not serve.
    AccountFinding finding;
    bool needsAttention = false; ///< the desktop waits for the user to sign in again

    friend bool operator==(const OnlineAccount&, const OnlineAccount&) = default;
};

/// The account to use among GNOME's: the one of the given path, where it still is there and serves;
/// otherwise the one that was set up first; where none serves, the first of those that could if
/// they were set up another way. Their kind does not matter, only that they have files, and a
/// password. One that waits for the user serves.
[[nodiscard]] std::optional<OnlineAccount> chooseOnlineAccount(
    const BusObjects& objects, const QString& path);

} // namespace mirror
