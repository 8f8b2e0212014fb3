#pragma once

#include <QString>

// Names of GNOME Online Accounts on the session bus.

namespace mirror {

inline const QString accountInterface = QStringLiteral("org.gnome.OnlineAccounts.Account");
inline const QString filesInterface = QStringLiteral("org.gnome.OnlineAccounts.Files");
inline const QString passwordInterface = QStringLiteral("org.gnome.OnlineAccounts.PasswordBased");

} // namespace mirror
