#pragma once

#include <QObject>
#include <QVariantMap>

/// One request to the desktop portal, from the call to the user's answer.
///
/// A portal answers twice: at once with the request's handle or an error, and later, by a signal on
/// that handle, with what came of it. This object waits for the error or the signal, or for the end
/// of the portal, reports it once and deletes itself.
class PortalRequest : public QObject {
    Q_OBJECT

public:
    /// What came of a request; the first three are the portal's own codes. A portal that goes away
    /// has failed, too.
    enum Outcome {
        Done = 0,
        Cancelled = 1,
        Failed = 2,
        Refused, ///< no bus, no portal or no such method: nothing was shown, and nothing will be
        Unanswered, ///< the portal is there and does not answer: it may still show something
    };

    using QObject::QObject;

    /// Calls the method with the arguments and, as its last one, the options, to which a handle's
    /// token is added. Returns at once. To be called once.
    void call(const QString& interface, const QString& method, const QVariantList& arguments,
        QVariantMap options);

    /// Takes back a request that was called: what the portal shows of it goes away, and `finished`
    /// is not emitted. Deletes this object.
    void withdraw();

Q_SIGNALS:
    void finished(PortalRequest::Outcome outcome, const QVariantMap& results);

private Q_SLOTS:
    void onResponse(uint code, const QVariantMap& results);

private:
    void failWithThePortal();
    void finishUnanswered();
    void finish(Outcome outcome, const QVariantMap& results);

    QString m_handle;
    bool m_finished = false;
};
