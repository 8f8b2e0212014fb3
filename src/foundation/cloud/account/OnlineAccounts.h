#pragma once

#include "OnlineAccountChoice.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>

#include <chrono>

namespace mirror {

/// Follows the accounts that the user set up in GNOME's settings (org.gnome.OnlineAccounts on the
/// session bus), and chooses the one to use. Where that service is neither running nor installed,
/// or there is no bus, there are none. It is started at most once, by start(): one that goes away
/// takes its accounts with it until it is back.
class OnlineAccounts : public QObject {
    Q_OBJECT

public:
    OnlineAccounts(
        const QDBusConnection& bus, std::chrono::milliseconds limit, QObject* parent = nullptr);

    /// Begins to look; changed() tells of the first answer in any case.
    void start();

    /// Whether there was a first answer.
    [[nodiscard]] bool isKnown() const { return m_isKnown; }
    [[nodiscard]] const std::optional<OnlineAccount>& chosen() const { return m_chosen; }

    /// Has the desktop try the chosen account's credentials, and ask the user for new ones where
    /// they do not hold. credentialsTouched() tells that it has.
    void ensureCredentials();

Q_SIGNALS:
    /// Another account, or something else about the same.
    void changed();
    /// Something happened to the chosen account, so perhaps to its credentials.
    void credentialsTouched();
    /// The user signed in again.
    void credentialsRenewed();

private Q_SLOTS:
    void onPropertiesChanged(const QString& interface, const QVariantMap& properties,
        const QStringList& invalidated, const QDBusMessage& signal);
    void read();

private:
    void follow();
    void readFirst(const QStringList& names);
    void readThrough(const QDBusMessage& call);
    void take(const QDBusMessage& answer);
    void choose(const BusObjects& objects);

    QDBusConnection m_bus;
    const std::chrono::milliseconds m_limit;
    QDBusServiceWatcher m_service;
    bool m_isKnown = false;
    bool m_isReading = false;
    bool m_readsAgain = false; // something changed since the reading began
    std::optional<OnlineAccount> m_chosen;
};

/// The call that answers with the account's password.
[[nodiscard]] QDBusMessage onlinePasswordCall(const QString& path);

} // namespace mirror
