#pragma once

#include <QObject>
#include <QPointer>

class PortalRequest;
class QUrl;

/// Opens the user's e-mail program with a message that is ready to be sent.
///
/// The desktop portal is asked first. Where there is none, or it fails, xdg-email is, and, where
/// that is not installed or fails, the handler of mailto addresses. A user who cancels is not asked
/// again.
class EmailComposer : public QObject {
    Q_OBJECT

public:
    enum Outcome {
        Composed,
        Cancelled, ///< by the user
        Failed, ///< nothing on this desktop takes e-mail
    };

    using QObject::QObject;

    /// Returns at once; plain text, any script. To be called once.
    void compose(const QString& subject, const QString& body);

    /// Gives up a request that the portal has not answered; `finished` is not emitted then. A mail
    /// program that is being started goes on starting, and has composed the message: `finished`
    /// says so during the call.
    void withdraw();

Q_SIGNALS:
    /// Once. A mail program that still runs after some seconds has opened its window.
    void finished(EmailComposer::Outcome outcome);

private:
    void composeWithoutPortal(const QString& subject, const QString& body);
    void startXdgEmail(const QString& program, const QString& subject, const QString& body);
    void openAddress(const QUrl& mailto);
    void finish(Outcome outcome);

    QPointer<PortalRequest> m_request;
    bool m_isStarting = false; // the mail program
    bool m_finished = false;
};
