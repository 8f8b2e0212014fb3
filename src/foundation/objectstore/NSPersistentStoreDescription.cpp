#include "NSPersistentStoreDescription.h"

void NSPersistentStoreDescription::setOption(const QVariant& value, const QString& key)
{
    for (auto& option : m_options) {
        if (option.first == key) {
            option.second = value;
            return;
        }
    }
    m_options.append({ key, value });
}

QVariant NSPersistentStoreDescription::option(const QString& key) const
{
    for (const auto& option : m_options) {
        if (option.first == key)
            return option.second;
    }
    return {};
}
