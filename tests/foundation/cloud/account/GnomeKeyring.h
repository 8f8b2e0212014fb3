#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QTemporaryDir>

/// A keyring of the test's own: gnome-keyring-daemon on the given bus, its files in a temporary
/// folder. The bus is the session's of this process, too.
class GnomeKeyring {
public:
    enum class Lock { Unlocked, Locked };

    explicit GnomeKeyring(const QDBusConnection& bus);
    ~GnomeKeyring();
    Q_DISABLE_COPY_MOVE(GnomeKeyring)

    /// Returns once it is on the bus. A locked one needs to have been unlocked before.
    void start(Lock lock);
    void stop();
    void lock() const;
    void unlock() const;

    /// Runs a line as the user does in a terminal, who then types.
    void run(const QString& line, const QString& typed) const;

private:
    void call(const QString& interface, const QString& method, const QVariantList& arguments) const;
    [[nodiscard]] QProcessEnvironment environment() const;

    QDBusConnection m_bus;
    QTemporaryDir m_folder;
    QProcess m_process;
};
