#pragma once

#include <QObject>

/// Opens the user's e-mail program with a message that is ready to be sent.
///
/// The desktop portal is asked first. Where there is none, or it fails, xdg-email is, or, where
/// that is not installed, the handler of mailto addresses. A user who cancels is not asked again.
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
