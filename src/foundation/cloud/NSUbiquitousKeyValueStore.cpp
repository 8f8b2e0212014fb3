#include "NSUbiquitousKeyValueStore.h"

#include <QStandardPaths>

#include <algorithm>

namespace {

// When a pending choice was made, in milliseconds since 1970, by the choice's key.
const QString PendingGroup = QStringLiteral("pending/");

} // namespace

NSUbiquitousKeyValueStore& NSUbiquitousKeyValueStore::defaultStore()
{
    static auto* const instance = new NSUbiquitousKeyValueStore(
        QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
        + QLatin1String("/cloud-values.ini"));
    return *instance;
}

NSUbiquitousKeyValueStore::NSUbiquitousKeyValueStore(const QString& file)
    : m_copy(file)
{
}

bool NSUbiquitousKeyValueStore::boolForKey(const QString& key) const
{
    return m_copy.boolForKey(key);
}

void NSUbiquitousKeyValueStore::setBool(bool value, const QString& key)
{
    if (m_copy.contains(key) && m_copy.boolForKey(key) == value)
        return; // nothing was chosen: it would win over a later choice of another device
    // A second choice must be told from the first one that is being carried.
    const qint64 now = std::max(QDateTime::currentMSecsSinceEpoch(), madeAt(key) + 1);
    m_copy.setValue(key, value);
    m_copy.setValue(PendingGroup + key, now);
    m_copy.synchronize();
    Q_EMIT changedHere();
}

qint64 NSUbiquitousKeyValueStore::madeAt(const QString& key) const
{
    return m_copy.integerForKey(PendingGroup + key);
}

QList<UbiquitousChange> NSUbiquitousKeyValueStore::pendingChanges() const
{
    QList<UbiquitousChange> changes;
    for (const QString& stamp : m_copy.keys()) {
        const QString key = stamp.mid(PendingGroup.size());
        if (stamp.startsWith(PendingGroup))
            changes.append(
                { key, boolForKey(key), QDateTime::fromMSecsSinceEpoch(madeAt(key), Qt::UTC) });
    }
    return changes;
}

void NSUbiquitousKeyValueStore::didCarry(const UbiquitousChange& change)
{
    if (madeAt(change.key) != change.madeAt.toMSecsSinceEpoch())
        return;
    m_copy.removeValue(PendingGroup + change.key);
    m_copy.synchronize();
}

void NSUbiquitousKeyValueStore::adopt(bool value, const QString& key)
{
    if (m_copy.contains(PendingGroup + key)
        || (m_copy.contains(key) && m_copy.boolForKey(key) == value))
        return;
    m_copy.setValue(key, value);
    m_copy.synchronize();
    Q_EMIT didChangeExternally(key);
}
