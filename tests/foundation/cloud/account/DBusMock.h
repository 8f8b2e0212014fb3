#pragma once

#include <QDBusConnection>
#include <QProcess>

/// A service that python-dbusmock plays in a process of its own, by a template beside this file.
class DBusMock {
public:
    DBusMock(const QDBusConnection& bus, QString service, QString path, QString templateName);
    ~DBusMock();
    Q_DISABLE_COPY_MOVE(DBusMock)

    /// What plays it, for a bus to start it.
    static QString command(const QString& templateName);

    /// Returns once it is on the bus.
    void start();
    void stop();
    /// It answers nothing until it goes on.
    void pause() const;
    void goOn() const;

    /// Calls a method of the template.
    QStringList tell(const QString& method, const QVariantList& arguments = {}) const;

private:
    QDBusConnection m_bus;
    const QString m_service;
    const QString m_path;
    const QString m_template;
    QProcess m_process;
};
