#include "FakeKdeConnect.h"

#include <QDBusMessage>
#include <QDBusMetaType>

#include <utility>

using DeviceNames = QMap<QString, QString>;
Q_DECLARE_METATYPE(DeviceNames)

namespace {

const QString connectionName = QStringLiteral("kdeconnect");
const QString service = QStringLiteral("org.kde.kdeconnect");
const QString root = QStringLiteral("/modules/kdeconnect");

} // namespace

FakeKdeConnect::FakeKdeConnect(const QString& address, QMap<QString, QString> devices)
    : m_bus(QDBusConnection::connectToBus(address, connectionName))
    , m_devices(std::move(devices))
{
    qDBusRegisterMetaType<DeviceNames>();
    m_bus.registerVirtualObject(root, this, QDBusConnection::SubPath);
    m_bus.registerService(service);
}

FakeKdeConnect::~FakeKdeConnect()
{
    m_bus.unregisterService(service);
    QDBusConnection::disconnectFromBus(connectionName);
}

QString FakeKdeConnect::introspect(const QString&) const { return {}; }

bool FakeKdeConnect::handleMessage(const QDBusMessage& message, const QDBusConnection&)
{
    return m_bus.send(answerTo(message));
}

QDBusMessage FakeKdeConnect::answerTo(const QDBusMessage& message)
{
    const QDBusMessage unknown = message.createErrorReply(QDBusError::UnknownMethod, {});
    const QString method = message.interface() + QLatin1Char('.') + message.member();
    if (method == QLatin1String("org.kde.kdeconnect.daemon.deviceNames")) {
        const bool asked
            = message.path() == root && message.arguments() == QVariantList { true, true };
        return asked ? message.createReply(QVariant::fromValue(m_devices)) : unknown;
    }
    // "/modules/kdeconnect/devices/IDENTIFIER" and what is below it
    const QString device = message.path().section(QLatin1Char('/'), 4, 4);
    const QString below = message.path().section(QLatin1Char('/'), 5);
    const QString argument = message.arguments().value(0).toString();
    if (!m_devices.contains(device))
        return unknown;
    if (method == QLatin1String("org.kde.kdeconnect.device.hasPlugin") && below.isEmpty()
        && argument == QLatin1String("kdeconnect_share"))
        return message.createReply(!m_withoutShares.contains(device));
    if (method == QLatin1String("org.kde.kdeconnect.device.share.shareText")
        && below == QLatin1String("share")) {
        m_texts.insert(device, argument);
        return message.createReply();
    }
    return unknown;
}
