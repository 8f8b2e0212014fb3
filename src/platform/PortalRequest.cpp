#include "PortalRequest.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString desktopPath = QStringLiteral("/org/freedesktop/portal/desktop");

QString nextToken()
{
    static int requests = 0;
    return QStringLiteral("vexilo%1").arg(++requests);
}

/// Where the portal will answer; known beforehand, so that no answer can come too early.
QString handlePath(const QDBusConnection& bus, const QString& token)
{
    QString sender = bus.baseService().mid(1);
    sender.replace(QLatin1Char('.'), QLatin1Char('_'));
    return desktopPath + QLatin1String("/request/") + sender + QLatin1Char('/') + token;
}

} // namespace

void PortalRequest::call(const QString& interface, const QString& method,
    const QVariantList& arguments, QVariantMap options)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        finish(Refused, {});
        return;
    }
    const QString token = nextToken();
    bus.connect(service, handlePath(bus, token), QStringLiteral("org.freedesktop.portal.Request"),
        QStringLiteral("Response"), this, SLOT(onResponse(uint, QVariantMap)));

    options.insert(QStringLiteral("handle_token"), token);
    QDBusMessage message = QDBusMessage::createMethodCall(service, desktopPath, interface, method);
    message.setArguments(arguments + QVariantList { options });
    auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        if (watcher->isError())
            finish(Refused, {});
    });
}

void PortalRequest::onResponse(uint code, const QVariantMap& results)
{
    finish(code == Done ? Done : code == Cancelled ? Cancelled : Failed, results);
}

void PortalRequest::finish(Outcome outcome, const QVariantMap& results)
{
    Q_EMIT finished(outcome, results);
    deleteLater();
}
