#include "PortalInterface.h"

#include "PortalService.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QObject>

namespace {

void ask(const QString& interface, QObject* context, const std::function<void(bool)>& answer)
{
    // Every interface of the portal has this property.
    QDBusMessage message = QDBusMessage::createMethodCall(portal::service, portal::path,
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    message << interface << QStringLiteral("version");
    auto* const watcher
        = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(message), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, [watcher, answer] {
        watcher->deleteLater();
        answer(!watcher->isError());
    });
}

} // namespace

void whenPortalHas(const QString& interface, QObject* context, const std::function<void()>& yes)
{
    ask(interface, context, [yes](bool has) {
        if (has)
            yes();
    });
}

void whenPortalLacks(const QString& interface, QObject* context, const std::function<void()>& no)
{
    ask(interface, context, [no](bool has) {
        if (!has)
            no();
    });
}
