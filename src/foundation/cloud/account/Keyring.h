#pragma once

#include "CloudAccount.h"
#include "PasswordRequest.h"

#include <QDBusConnection>
#include <QMap>

namespace mirror {

/// What the password of an account is called in the keyring: the user at the server, so that it
/// never goes to another one that cloud.ini is pointed at later.
[[nodiscard]] QString keyringKey(const CloudAccount& account);

/// Reads it there, in the Secret Service or KWallet of the session; asks the user to unlock the
/// former. An error is a sentence for the user.
[[nodiscard]] PasswordSource keyringPassword(const QDBusConnection& bus, const QString& key);

/// By what attributes the Secret Service finds it.
[[nodiscard]] QMap<QString, QString> keyringAttributes(const QString& key);

/// The line with which the user stores it from a terminal.
[[nodiscard]] QString storeCommand(const QString& key);

/// Sentences for the user.
[[nodiscard]] QString missingPassword(const QString& key);
[[nodiscard]] QString refusedPassword(const QString& key);
[[nodiscard]] QString lockedKeyring();
[[nodiscard]] QString noKeyring();

} // namespace mirror
