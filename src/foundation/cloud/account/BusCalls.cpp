#include "BusCalls.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

namespace mirror {

namespace {

QDBusMessage busCall(const QString& method)
{
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"), method);
}

QStringList names(const QDBusMessage& answer)
{
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0).toStringList()
                                                       : QStringList();
}

} // namespace

void callBus(const QDBusConnection& bus, const QDBusMessage& call, std::chrono::milliseconds limit,
    QObject* context, const std::function<void(const QDBusMessage&)>& take)
{
    // Of a call on a bus that is not there, nobody would hear.
    const QDBusPendingCall pending = bus.isConnected()
        ? bus.asyncCall(call, static_cast<int>(limit.count()))
        : QDBusPendingCall::fromError(QDBusError(QDBusError::Disconnected, QString()));
    auto* const watcher = new QDBusPendingCallWatcher(pending, context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, [watcher, take] {
        watcher->deleteLater();
        take(watcher->reply());
    });
}

void findBusNames(const QDBusConnection& bus, std::chrono::milliseconds limit, QObject* context,
    const std::function<void(const QStringList&)>& tell)
{
    const QDBusMessage activatable = busCall(QStringLiteral("ListActivatableNames"));
    callBus(bus, activatable, limit, context, [=](const QDBusMessage& answer) {
        const QStringList found = names(answer);
        callBus(bus, busCall(QStringLiteral("ListNames")), limit, context,
            [=](const QDBusMessage& running) { tell(found + names(running)); });
    });
}

} // namespace mirror
