#pragma once

#include <QDBusConnection>
#include <QProcess>

/// GNOME's online accounts, played by python-dbusmock in a process of its own.
class FakeOnlineAccounts {
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

    static QString service();
    /// What plays it, for a bus to start it.
    static QString command();

    explicit FakeOnlineAccounts(const QDBusConnection& bus);
    ~FakeOnlineAccounts();
    Q_DISABLE_COPY_MOVE(FakeOnlineAccounts)

    /// Returns once it is on the bus.
    void start();
    void stop();
    /// It answers nothing until it goes on.
    void pause() const;
    void goOn() const;

    void add(const Account& account) const;
    /// A method of the template.
    QStringList tell(const QString& method, const QStringList& arguments = {}) const;

private:
    QStringList call(const QString& method, const QVariantList& arguments) const;

    QDBusConnection m_bus;
    QProcess m_process;
};
