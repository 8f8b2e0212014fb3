#pragma once

#include <QList>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// A session bus of the test's own, which becomes this process's. Make it before the application.
class PrivateBus {
public:
    /// What the bus starts when it is spoken to.
    struct Service {
        QString name;
        QString command;
    };

    /// The machine's own services are never started.
    explicit PrivateBus(const QList<Service>& services = {});
    ~PrivateBus();
    Q_DISABLE_COPY_MOVE(PrivateBus)

    /// Empty where the bus could not be started.
    [[nodiscard]] QString address() const { return m_address; }

private:
    void writeServices(const QList<Service>& services) const;

    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
};
