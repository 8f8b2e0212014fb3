#pragma once

#include <QObject>
#include <QPointer>

class PortalRequest;

/// Opens the user's e-mail program with a message that is ready to be sent.
///
/// The desktop portal is asked first. Where there is none, or it fails, xdg-email is, or, where
/// that is not installed, the handler of mailto addresses. A user who cancels is not asked again.
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
    /// program that is being started goes on starting.
    void withdraw();

Q_SIGNALS:
    /// Once. A mail program that still runs after some seconds has opened its window.
    void finished(EmailComposer::Outcome outcome);

private:
    void composeWithoutPortal(const QString& subject, const QString& body);
    void startXdgEmail(const QString& program, const QStringList& arguments);
    void finish(Outcome outcome);

    QPointer<PortalRequest> m_request;
    bool m_finished = false;
};
