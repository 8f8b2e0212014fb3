#include "PortalRequest.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

#include <utility>

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString desktopPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");

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

PortalRequest::Outcome outcomeOf(QDBusError::ErrorType error)
{
    const bool noAnswer = error == QDBusError::NoReply || error == QDBusError::Timeout
        || error == QDBusError::TimedOut;
    return noAnswer ? PortalRequest::Unanswered : PortalRequest::Refused;
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
    m_handle = handlePath(bus, token);
    bus.connect(service, m_handle, requestInterface, QStringLiteral("Response"), this,
        SLOT(onResponse(uint, QVariantMap)));

    options.insert(QStringLiteral("handle_token"), token);
    QDBusMessage message = QDBusMessage::createMethodCall(service, desktopPath, interface, method);
    message.setArguments(arguments + QVariantList { options });
    auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        if (watcher->isError())
            finish(outcomeOf(watcher->error().type()), {});
    });
}

void PortalRequest::withdraw()
{
    m_finished = true;
    QDBusConnection::sessionBus().asyncCall(QDBusMessage::createMethodCall(
        service, m_handle, requestInterface, QStringLiteral("Close")));
    deleteLater();
}

void PortalRequest::onResponse(uint code, const QVariantMap& results)
{
    finish(code == Done ? Done : code == Cancelled ? Cancelled : Failed, results);
}

void PortalRequest::finish(Outcome outcome, const QVariantMap& results)
{
    if (std::exchange(m_finished, true))
        return;
    deleteLater();
    Q_EMIT finished(outcome, results);
}
