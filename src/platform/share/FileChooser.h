#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class PortalRequest;

/// Asks the user, through the desktop portal, where to save a file.
class FileChooser : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// What the portal's interface is called.
    [[nodiscard]] static QString interface();

    /// Returns at once. `name` is suggested to the user. To be called once.
    void askWhereToSave(const QString& title, const QString& name);
    /// Takes the question back: none of the signals is emitted.
    void withdraw();

Q_SIGNALS:
    /// The user chose a file of this computer, by its absolute path. Where it is there already, the
    /// user was asked whether to replace it.
    void chosen(const QString& path);
    void cancelled();
    void failed(const QString& description);

private:
    void takeAddress(const QString& address);

    QPointer<PortalRequest> m_request;
};
