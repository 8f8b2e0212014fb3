#pragma once

#include "Activation.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QVariantList>

#include <chrono>
#include <optional>

class QTimer;

/// This program on the session bus, where it stands once. A second start has the first one show its
/// window and ends. Nobody is waited for without end: where the first one is silent for two
/// seconds, or there is no bus, the second one runs.
///
/// The bus keeps all that ask for the name in a row, and gives it to the next one when its owner
/// ends. So a start that asks just then becomes the owner instead of being lost.
class DesktopApplication : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// Asks for the name without waiting. The activation is handed to a program that is there,
    /// which is given some time to answer: it may have to be fetched from the swap.
    explicit DesktopApplication(Activation activation,
        const QDBusConnection& bus = QDBusConnection::sessionBus(),
        std::chrono::milliseconds patience = std::chrono::seconds(2));
    /// Leaves the name to the next start.
    ~DesktopApplication() override;

    /// Whether this process is to show a window. False once another one has agreed to show its own.
    /// Waits for the bus, and for the other program if there is one; runs an event loop then.
    [[nodiscard]] bool isToRun();

    /// For the end of the window: whoever starts the program from now on gets no answer that it
    /// would rely on, and waits for this process's end to run itself.
    void stopAnswering();
    /// From now on the next start does not ask this process: what it would find is on the disk.
    void leave();

Q_SIGNALS:
    /// The user has started the program once more.
    void activated(const Activation& activation);
    /// Of the name, while this process waits for its owner.
    void ownerChanged();

public Q_SLOTS:
    // The interface. What comes is believed to be neither true nor well formed.
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(
        const QString& name, const QVariantList& parameter, const QVariantMap& platformData);

private:
    enum class Role { Undecided, Runs, Leaves };
    enum class Answer { None, Shown, Refused };

    [[nodiscard]] QDBusPendingCall requestName(uint flags) const;
    [[nodiscard]] Role askTheOther();
    [[nodiscard]] Answer askUntil(const QTimer& deadline);
    void answerThoseWhoWait();

    Activation m_activation;
    QDBusConnection m_bus;
    std::chrono::milliseconds m_patience;
    std::optional<QDBusPendingCall> m_request; // for the name; none without a bus
    Role m_role = Role::Undecided;
    QList<QDBusMessage> m_waiting; // asked before this process knew whether it runs
};
