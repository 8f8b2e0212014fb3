#include "FakeDesktop.h"

#include <QDBusMetaType>
#include <QFile>

namespace {

const QString connectionName = QStringLiteral("portal");
const QString service = QStringLiteral("org.freedesktop.portal.Desktop");

// No folder of services: the machine's own are never started.
constexpr auto configuration = R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

} // namespace

PrivateBus::PrivateBus()
{
    QFile file(m_folder.filePath(QStringLiteral("bus.conf")));
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(QString::fromLatin1(configuration).arg(m_folder.path()).toUtf8());
    file.close();
    m_daemon.start(QStringLiteral("dbus-daemon"),
        { QStringLiteral("--config-file=") + file.fileName(), QStringLiteral("--nofork"),
            QStringLiteral("--print-address") });
    if (!m_daemon.waitForReadyRead())
        return;
    m_address = QString::fromLatin1(m_daemon.readLine()).trimmed();
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_address.toLatin1());
}

PrivateBus::~PrivateBus()
{
    m_daemon.terminate();
    m_daemon.waitForFinished();
}

FakePortal::FakePortal(const QString& address, DesktopSettings settings)
    : m_bus(QDBusConnection::connectToBus(address, connectionName))
    , m_settings(std::move(settings))
{
    qDBusRegisterMetaType<DesktopSettings>();
    m_bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
        QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
    m_bus.registerService(service);
}

FakePortal::~FakePortal()
{
    m_bus.unregisterService(service);
    QDBusConnection::disconnectFromBus(connectionName);
}

void FakePortal::announce(const QString& space, const QString& key, const QVariant& value)
{
    Q_EMIT SettingChanged(space, key, QDBusVariant(value));
}

DesktopSettings FakePortal::ReadAll(const QStringList& spaces)
{
    ++m_reads;
    DesktopSettings asked;
    for (const QString& space : spaces) {
        if (m_settings.contains(space))
            asked.insert(space, m_settings.value(space));
    }
    return asked;
}
