#include "OnlineAccounts.h"

#include "BusCalls.h"
#include "OnlineAccountInterfaces.h"

#include <QDBusMetaType>
#include <QDBusReply>

namespace mirror {

namespace {

using InterfaceProperties = QMap<QString, QVariantMap>;

const QString service = QStringLiteral("org.gnome.OnlineAccounts");
const QString root = QStringLiteral("/org/gnome/OnlineAccounts");
const QString managerInterface = QStringLiteral("org.freedesktop.DBus.ObjectManager");

QDBusMessage callTo(const QString& path, const QString& interface, const QString& method)
{
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, method);
    call.setAutoStartService(false);
    return call;
}

QDBusMessage objectsCall()
{
    return callTo(root, managerInterface, QStringLiteral("GetManagedObjects"));
}

} // namespace

QDBusMessage onlinePasswordCall(const QString& path)
{
    QDBusMessage call = callTo(path, passwordInterface, QStringLiteral("GetPassword"));
    call << QString(); // the account's one password
    return call;
}

OnlineAccounts::OnlineAccounts(
    const QDBusConnection& bus, std::chrono::milliseconds limit, QObject* parent)
    : QObject(parent)
    , m_bus(bus)
    , m_limit(limit)
    , m_service(service, bus, QDBusServiceWatcher::WatchForOwnerChange, this)
{
    qDBusRegisterMetaType<InterfaceProperties>();
    qDBusRegisterMetaType<BusObjects>();
}

void OnlineAccounts::start()
{
    follow();
    findBusNames(m_bus, m_limit, this, [this](const QStringList& names) { readFirst(names); });
}

void OnlineAccounts::follow()
{
    // Whatever happened, all is read anew: a message on the way may be older than what was read.
    connect(&m_service, &QDBusServiceWatcher::serviceOwnerChanged, this, &OnlineAccounts::read);
    for (const QString& signal :
        { QStringLiteral("InterfacesAdded"), QStringLiteral("InterfacesRemoved") })
        m_bus.connect(service, root, managerInterface, signal, this, SLOT(read()));
    m_bus.connect(service, QString(), QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("PropertiesChanged"), this,
        SLOT(onPropertiesChanged(QString, QVariantMap, QStringList, QDBusMessage)));
}

void OnlineAccounts::readFirst(const QStringList& names)
{
    if (!names.contains(service)) {
        choose({});
        return;
    }
    QDBusMessage call = objectsCall();
    call.setAutoStartService(true);
    readThrough(call);
}

void OnlineAccounts::read() { readThrough(objectsCall()); }

void OnlineAccounts::readThrough(const QDBusMessage& call)
{
    m_readsAgain = m_isReading;
    if (m_isReading)
        return;
    m_isReading = true;
    callBus(m_bus, call, m_limit, this, [this](const QDBusMessage& answer) { take(answer); });
}

void OnlineAccounts::take(const QDBusMessage& answer)
{
    m_isReading = false;
    const QDBusReply<BusObjects> objects = answer;
    // A service that is only slow still has its accounts.
    if (objects.isValid() || !m_isKnown || objects.error().type() != QDBusError::NoReply)
        choose(objects.isValid() ? objects.value() : BusObjects());
    if (m_readsAgain)
        read();
}

void OnlineAccounts::choose(const BusObjects& objects)
{
    std::optional<OnlineAccount> chosen
        = chooseOnlineAccount(objects, m_chosen ? m_chosen->path : QString());
    if (m_isKnown && chosen == m_chosen)
        return;
    m_isKnown = true;
    m_chosen = std::move(chosen);
    Q_EMIT changed();
}

void OnlineAccounts::onPropertiesChanged(const QString& interface, const QVariantMap& properties,
    const QStringList& /*invalidated*/, const QDBusMessage& signal)
{
    read();
    if (!m_chosen || signal.path() != m_chosen->path)
        return;
    const QVariant attention = interface == accountInterface
        ? properties.value(QStringLiteral("AttentionNeeded"))
        : QVariant();
    if (attention.isValid() && !attention.toBool())
        Q_EMIT credentialsRenewed();
    else
        Q_EMIT credentialsTouched();
}

void OnlineAccounts::ensureCredentials()
{
    if (!m_chosen)
        return;
    callBus(m_bus, callTo(m_chosen->path, accountInterface, QStringLiteral("EnsureCredentials")),
        promptPatience, this, [this](const QDBusMessage&) { Q_EMIT credentialsTouched(); });
}

} // namespace mirror
