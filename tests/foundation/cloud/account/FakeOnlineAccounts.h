#pragma once

#include "DBusMock.h"

/// GNOME's online accounts.
class FakeOnlineAccounts : public DBusMock {
public:
    /// One account with files on a server.
    struct Account {
        QString id = QStringLiteral("account_1700000000_0");
        QString kind = QStringLiteral("owncloud");
        QString identity = QStringLiteral("ann");
        QString uri = QStringLiteral("davs://ann@cloud.example/remote.php/webdav");
        QString password = QStringLiteral("Ziegenkäse %41");
        bool acceptsErrors = false;
    };

    static QString service() { return QStringLiteral("org.gnome.OnlineAccounts"); }
    static QString templateName() { return QStringLiteral("online_accounts.py"); }

    explicit FakeOnlineAccounts(const QDBusConnection& bus)
        : DBusMock(bus, service(), QStringLiteral("/org/gnome/OnlineAccounts"), templateName())
    {
    }

    void add(const Account& account) const
    {
        tell(QStringLiteral("AddAccount"),
            { account.id, account.kind, account.identity, account.uri, account.password,
                account.acceptsErrors });
    }
};
