#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QMap>
#include <QObject>
#include <QVariantMap>

using DesktopSettings = QMap<QString, QVariantMap>; // values by namespace and key

/// The settings of a desktop portal, on the bus for the life of this object.
class FakePortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    FakePortal(const QString& address, DesktopSettings settings);
    ~FakePortal() override;

    /// How often all settings were read.
    [[nodiscard]] int reads() const { return m_reads; }

    void announce(const QString& space, const QString& key, const QVariant& value);

public Q_SLOTS:
    DesktopSettings ReadAll(const QStringList& spaces);

Q_SIGNALS:
    void SettingChanged(const QString& space, const QString& key, const QDBusVariant& value);

private:
    QDBusConnection m_bus;
    DesktopSettings m_settings;
    int m_reads = 0;
};
