#pragma once

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QList>
#include <QObject>

#include <chrono>
#include <functional>
#include <optional>

namespace mirror {

// What QtKeychain does not tell of the Secret Service: what is there without unlocking anything,
// and unlocking it. It does not find an item in a keyring that is locked from the start.

extern const QString secretService; ///< its name on the bus
extern const QString secretServicePath;
extern const QString secretServiceInterface;

/// The items that have one password.
struct SecretItems {
    QList<QDBusObjectPath> readable;
    QList<QDBusObjectPath> locked;
};

/// Whether asking may start the service.
enum class Start { Never, Allowed };

/// Looks for the password of the key, see keyringKey(). Nothing where the service does not answer.
void findSecretItems(const QDBusConnection& bus, const QString& key, Start start,
    std::chrono::milliseconds limit, QObject* context,
    const std::function<void(const std::optional<SecretItems>&)>& take);

/// Asks the user to unlock the password of the key, where it is locked. In the end tells whether it
/// still is.
void unlockSecret(const QDBusConnection& bus, const QString& key, QObject* context,
    const std::function<void(bool isLocked)>& done);

} // namespace mirror
