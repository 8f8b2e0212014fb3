#include "PortalRequest.h"

#include "PortalService.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

#include <utility>

namespace {

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
    return portal::path + QLatin1String("/request/") + sender + QLatin1Char('/') + token;
}

bool isSilence(QDBusError::ErrorType error)
{
    return error == QDBusError::NoReply || error == QDBusError::Timeout
        || error == QDBusError::TimedOut;
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
    bus.connect(portal::service, m_handle, requestInterface, QStringLiteral("Response"), this,
        SLOT(onResponse(uint, QVariantMap)));
    failWithThePortal();

    options.insert(QStringLiteral("handle_token"), token);
    QDBusMessage message
        = QDBusMessage::createMethodCall(portal::service, portal::path, interface, method);
    message.setArguments(arguments + QVariantList { options });
    auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        if (!watcher->isError())
            return;
        if (isSilence(watcher->error().type()))
            finishUnanswered();
        else
            finish(Refused, {});
    });
}

/// A portal that ends, or that another one replaces, forgets its requests. One that is started by
/// the call had no owner before.
void PortalRequest::failWithThePortal()
{
    auto* const owner = new QDBusServiceWatcher(portal::service, QDBusConnection::sessionBus(),
        QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(owner, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString&, const QString& oldOwner) {
            if (!oldOwner.isEmpty())
                finish(Failed, {});
        });
}

/// The bus says of a portal that has ended, too, that it gives no answer, and may say it before it
/// tells of the end: asked for the owner, it has told both.
void PortalRequest::finishUnanswered()
{
    QDBusMessage question = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("NameHasOwner"));
    question << portal::service;
    auto* const watcher
        = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<bool> isThere = *watcher;
        finish(!isThere.isError() && !isThere.value() ? Failed : Unanswered, {});
    });
}

void PortalRequest::withdraw()
{
    m_finished = true;
    QDBusConnection::sessionBus().asyncCall(QDBusMessage::createMethodCall(
        portal::service, m_handle, requestInterface, QStringLiteral("Close")));
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
