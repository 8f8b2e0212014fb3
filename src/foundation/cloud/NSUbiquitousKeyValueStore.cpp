#include "NSUbiquitousKeyValueStore.h"

#include <QStandardPaths>

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
    m_copy.setValue(key, value);
    m_copy.synchronize();
}
