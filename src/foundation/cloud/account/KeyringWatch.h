#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <chrono>

namespace mirror {

/// What can be known of a password without unlocking anything.
enum class KeyringEntry {
    Unknown, ///< there was no answer yet
    Untold, ///< a keyring that does not tell
    NoKeyring,
    Missing,
    Locked,
    Readable,
};

/// Tells whether the Secret Service on the session bus holds a password, and follows it.
class KeyringWatch : public QObject {
    Q_OBJECT

public:
    KeyringWatch(
        const QDBusConnection& bus, std::chrono::milliseconds limit, QObject* parent = nullptr);

    /// Asks for the password of this key from now on. A keyring that is installed is started once.
    void follow(const QString& key);

    [[nodiscard]] KeyringEntry entry() const { return m_entry; }

Q_SIGNALS:
    /// There was an answer. Also when the same is true that was: the password may be another.
    void looked();

private Q_SLOTS:
    void look();

private:
    void listen();
    void search(const QStringList& names);
    void take(const QString& key, KeyringEntry entry);

    QDBusConnection m_bus;
    const std::chrono::milliseconds m_limit;
    QDBusServiceWatcher m_service;
    QString m_key;
    bool m_isListening = false;
    bool m_mayStart = false;
    bool m_isLooking = false;
    bool m_looksAgain = false; // something changed since it began to look
    KeyringEntry m_entry = KeyringEntry::Unknown;
};

} // namespace mirror
