#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QMap>
#include <QSet>

/// KDE Connect with some devices, on the bus for the life of this object.
class FakeKdeConnect : public QDBusVirtualObject {
    Q_OBJECT

public:
    /// The names of the devices that can be reached, by their identifiers.
    FakeKdeConnect(const QString& address, QMap<QString, QString> devices);
    ~FakeKdeConnect() override;

    /// The device takes no shares.
    void withoutShares(const QString& device) { m_withoutShares.insert(device); }
    /// The device has gone since it was listed.
    void lose(const QString& device) { m_devices.remove(device); }

    /// What was sent, by devices.
    [[nodiscard]] const QMultiMap<QString, QString>& texts() const { return m_texts; }

    [[nodiscard]] QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    [[nodiscard]] QDBusMessage answerTo(const QDBusMessage& message);

    QDBusConnection m_bus;
    QMap<QString, QString> m_devices;
    QSet<QString> m_withoutShares;
    QMultiMap<QString, QString> m_texts;
};
