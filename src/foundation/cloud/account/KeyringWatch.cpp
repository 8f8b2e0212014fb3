#include "KeyringWatch.h"

#include "BusCalls.h"
#include "SecretService.h"

#include <algorithm>
#include <utility>

namespace mirror {

namespace {

const QString collectionInterface = QStringLiteral("org.freedesktop.Secret.Collection");

KeyringEntry entryFrom(const std::optional<SecretItems>& items)
{
    if (!items)
        return KeyringEntry::Untold;
    if (!items->readable.isEmpty())
        return KeyringEntry::Readable;
    return items->locked.isEmpty() ? KeyringEntry::Missing : KeyringEntry::Locked;
}

bool isKWallet(const QString& name) { return name.startsWith(QLatin1String("org.kde.kwalletd")); }

} // namespace

KeyringWatch::KeyringWatch(
    const QDBusConnection& bus, std::chrono::milliseconds limit, QObject* parent)
    : QObject(parent)
    , m_bus(bus)
    , m_limit(limit)
    , m_service(this)
{
}

void KeyringWatch::follow(const QString& key)
{
    if (!std::exchange(m_isListening, true))
        listen();
    if (key != m_key)
        m_entry = KeyringEntry::Unknown;
    m_key = key;
    m_mayStart = true;
    look();
}

void KeyringWatch::listen()
{
    m_service.setConnection(m_bus);
    m_service.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_service.addWatchedService(secretService);
    connect(&m_service, &QDBusServiceWatcher::serviceOwnerChanged, this, &KeyringWatch::look);
    for (const QString& signal : { QStringLiteral("ItemCreated"), QStringLiteral("ItemChanged"),
             QStringLiteral("ItemDeleted") })
        m_bus.connect(secretService, QString(), collectionInterface, signal, this, SLOT(look()));
    for (const QString& signal : { QStringLiteral("CollectionCreated"),
             QStringLiteral("CollectionChanged"), QStringLiteral("CollectionDeleted") })
        m_bus.connect(
            secretService, secretServicePath, secretServiceInterface, signal, this, SLOT(look()));
}

void KeyringWatch::look()
{
    m_looksAgain = m_isLooking;
    if (m_isLooking)
        return;
    m_isLooking = true;
    findBusNames(m_bus, m_limit, this, [this](const QStringList& names) { search(names); });
}

void KeyringWatch::search(const QStringList& names)
{
    const QString key = m_key;
    if (names.contains(secretService)) {
        // Once: a keyring that crashes is not started again and again.
        const Start start = std::exchange(m_mayStart, false) ? Start::Allowed : Start::Never;
        findSecretItems(m_bus, key, start, m_limit, this,
            [this, key](const std::optional<SecretItems>& items) { take(key, entryFrom(items)); });
        return;
    }
    const bool hasKWallet = std::any_of(names.cbegin(), names.cend(), isKWallet);
    take(key, hasKWallet ? KeyringEntry::Untold : KeyringEntry::NoKeyring);
}

void KeyringWatch::take(const QString& key, KeyringEntry entry)
{
    m_isLooking = false;
    if (key == m_key) {
        m_entry = entry;
        Q_EMIT looked();
    }
    if (m_looksAgain || key != m_key)
        look();
}

} // namespace mirror
