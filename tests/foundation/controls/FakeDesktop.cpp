#include "FakeDesktop.h"

#include <QDBusMetaType>

namespace {

const QString connectionName = QStringLiteral("portal");
const QString service = QStringLiteral("org.freedesktop.portal.Desktop");

} // namespace

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
