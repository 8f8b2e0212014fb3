#pragma once

#include <QObject>

/// Opens the user's e-mail program with a message that is ready to be sent.
///
/// The desktop portal is asked first, then xdg-email, then the handler of mailto addresses: the
/// first that takes the message ends the search, and so does a user who cancels.
class EmailComposer : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Returns at once; plain text, any script.
    void compose(const QString& subject, const QString& body);

Q_SIGNALS:
    /// Nothing on this desktop takes e-mail.
    void failed();

private:
    void composeWithoutPortal(const QString& subject, const QString& body);
};
