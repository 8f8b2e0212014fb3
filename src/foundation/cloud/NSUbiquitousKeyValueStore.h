#pragma once

#include "UserDefaults.h"

#include <QDateTime>
#include <QList>
#include <QObject>

/// A choice made on this device that the others do not know yet.
struct UbiquitousChange {
    QString key;
    bool value = false;
    QDateTime madeAt; ///< UTC

    friend bool operator==(const UbiquitousChange&, const UbiquitousChange&) = default;
};

/// Small values that belong to the user rather than to one device. Each device has a copy of its
/// own, in which a choice made offline is kept until it was carried to the others.
///
/// Belongs to the main thread. What carries the values takes pendingChanges(), and tells with
/// didCarry() and adopt() what became of them.
class NSUbiquitousKeyValueStore : public QObject {
    Q_OBJECT

public:
    /// The program's store, its copy in the application's data folder. Never torn down.
    static NSUbiquitousKeyValueStore& defaultStore();

    /// A store whose copy is that INI file, which need not exist yet.
    explicit NSUbiquitousKeyValueStore(const QString& file);

    /// False where the key is missing or holds no boolean.
    [[nodiscard]] bool boolForKey(const QString& key) const;
    /// On disk when it returns, where the disk takes it. The value that is there is no change.
    void setBool(bool value, const QString& key);

    [[nodiscard]] QList<UbiquitousChange> pendingChanges() const;
    /// The change is where the other devices find it, or will be by itself. A choice made since
    /// stays pending.
    void didCarry(const UbiquitousChange& change);
    /// What the devices agree on. A pending choice of this device is kept over it.
    void adopt(bool value, const QString& key);

Q_SIGNALS:
    /// This device's user chose something.
    void changedHere();
    /// Another device's choice has arrived.
    void didChangeExternally(const QString& key);

private:
    [[nodiscard]] qint64 madeAt(const QString& key) const;

    UserDefaults m_copy;
};
