#include "DesktopWishes.h"

#include "TextScale.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

#include <algorithm>
#include <cmath>

using PortalSettings = QMap<QString, QVariantMap>; // values by namespace and key
Q_DECLARE_METATYPE(PortalSettings)

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");

const QString appearanceSpace = QStringLiteral("org.freedesktop.appearance");
const QString gnomeSpace = QStringLiteral("org.gnome.desktop.interface");
const QString gnomeAccessSpace = QStringLiteral("org.gnome.desktop.a11y.interface");

/// The portal's numbers: 1 prefers dark, 2 prefers light, 0 and unknown ones neither.
std::optional<ColorScheme> schemeFromPortal(const QVariant& value)
{
    switch (value.toUInt()) {
    case 1:
        return ColorScheme::Dark;
    case 2:
        return ColorScheme::Light;
    default:
        return std::nullopt;
    }
}

/// A value that is no number says nothing.
double textScaleFromPortal(const QVariant& value)
{
    bool isNumber = false;
    const double scale = value.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(scale))
        return 1.0;
    return std::clamp(scale, leastTextScale, greatestTextScale);
}

} // namespace

DesktopWishes::DesktopWishes()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        m_known = true;
        return;
    }
    // Qt 6.4 connects no slot whose parameter types it has not met.
    qRegisterMetaType<QDBusVariant>();
    bus.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
        SLOT(onSettingChanged(QString, QString, QDBusVariant)));
    readAll();
}

Contrast DesktopWishes::contrast() const
{
    return contrastFrom(
        m_appearanceContrast == Contrast::High || m_gnomeContrast == Contrast::High);
}

void DesktopWishes::readAll()
{
    qDBusRegisterMetaType<PortalSettings>();
    QDBusMessage call
        = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("ReadAll"));
    call << QStringList { appearanceSpace, gnomeSpace, gnomeAccessSpace };
    auto* const watcher
        = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<PortalSettings> reply = *watcher;
        const PortalSettings settings = reply.isError() ? PortalSettings() : reply.value();
        for (auto space = settings.cbegin(); space != settings.cend(); ++space) {
            for (auto it = space->cbegin(); it != space->cend(); ++it)
                take(space.key(), it.key(), it.value());
        }
        m_known = true;
        Q_EMIT changed();
    });
}

void DesktopWishes::onSettingChanged(
    const QString& space, const QString& key, const QDBusVariant& value)
{
    if (take(space, key, value.variant()))
        Q_EMIT changed();
}

/// Whether it was a wish that this object knows of.
bool DesktopWishes::take(const QString& space, const QString& key, const QVariant& value)
{
    if (space == appearanceSpace && key == QLatin1String("color-scheme"))
        m_colorScheme = schemeFromPortal(value);
    else if (space == gnomeSpace && key == QLatin1String("enable-animations"))
        m_reducedMotion = !value.toBool();
    else if (space == gnomeSpace && key == QLatin1String("text-scaling-factor"))
        m_textScale = textScaleFromPortal(value);
    else if (space == appearanceSpace && key == QLatin1String("contrast"))
        m_appearanceContrast = contrastFrom(value.toUInt() == 1);
    else if (space == gnomeAccessSpace && key == QLatin1String("high-contrast"))
        m_gnomeContrast = contrastFrom(value.toBool());
    else
        return false;
    return true;
}
