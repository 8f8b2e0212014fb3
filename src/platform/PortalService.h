#pragma once

#include <QString>

/// Where the desktop portal is on the session bus.
namespace portal {

inline const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString path = QStringLiteral("/org/freedesktop/portal/desktop");

} // namespace portal
