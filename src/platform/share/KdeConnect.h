#pragma once

#include <QString>

class QDBusPendingCall;

/// The phones and other devices that KDE Connect reaches.
namespace kdeConnect {

/// Asks for the devices that are paired and can be reached now. KDE Connect is not started for
/// that.
[[nodiscard]] QDBusPendingCall deviceNames();

/// Asks a device whether it takes what is shared with it.
[[nodiscard]] QDBusPendingCall takesShares(const QString& device);

/// Sends a text to a device.
[[nodiscard]] QDBusPendingCall shareText(const QString& device, const QString& text);

} // namespace kdeConnect
