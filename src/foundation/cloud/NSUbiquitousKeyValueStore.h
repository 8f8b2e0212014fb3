#pragma once

#include "UserDefaults.h"

/// Small values that belong to the user rather than to one device. Each device has a copy of its
/// own, in which a choice made offline is kept.
class NSUbiquitousKeyValueStore {
public:
    /// The program's store, its copy in the application's data folder. Never torn down.
    static NSUbiquitousKeyValueStore& defaultStore();

    /// A store whose copy is that INI file, which need not exist yet.
    explicit NSUbiquitousKeyValueStore(const QString& file);

    /// False where the key is missing or holds no boolean.
    [[nodiscard]] bool boolForKey(const QString& key) const;
    /// On disk when it returns, where the disk takes it.
    void setBool(bool value, const QString& key);

private:
    UserDefaults m_copy;
};
