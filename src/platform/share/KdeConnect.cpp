#include "KdeConnect.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>

namespace {

const QString service = QStringLiteral("org.kde.kdeconnect");
const QString daemonPath = QStringLiteral("/modules/kdeconnect");

QString devicePath(const QString& device)
{
    return daemonPath + QLatin1String("/devices/") + device;
}

QDBusPendingCall call(const QString& path, const QString& interface, const QString& method,
    const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    return QDBusConnection::sessionBus().asyncCall(message);
}

} // namespace

QDBusPendingCall kdeConnect::deviceNames()
{
    const bool onlyReachable = true;
    const bool onlyPaired = true;
    return call(daemonPath, QStringLiteral("org.kde.kdeconnect.daemon"),
        QStringLiteral("deviceNames"), { onlyReachable, onlyPaired });
}

QDBusPendingCall kdeConnect::takesShares(const QString& device)
{
    return call(devicePath(device), QStringLiteral("org.kde.kdeconnect.device"),
        QStringLiteral("hasPlugin"), { QStringLiteral("kdeconnect_share") });
}

QDBusPendingCall kdeConnect::shareText(const QString& device, const QString& text)
{
    return call(devicePath(device) + QLatin1String("/share"),
        QStringLiteral("org.kde.kdeconnect.device.share"), QStringLiteral("shareText"), { text });
}
