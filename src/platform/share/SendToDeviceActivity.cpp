#include "SendToDeviceActivity.h"

#include "ActivityTypes.h"
#include "KdeConnect.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

SendToDeviceActivity::SendToDeviceActivity(QString device, QString name)
    : m_device(std::move(device))
    , m_name(std::move(name))
{
}

ActivityType SendToDeviceActivity::activityType() const { return activityType::sendToDevice; }

void SendToDeviceActivity::ask(const ActivityItem&)
{
    auto* const watcher = new QDBusPendingCallWatcher(kdeConnect::takesShares(m_device), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<bool> reply = *watcher;
        if (!reply.isError() && reply.value())
            Q_EMIT available();
    });
}

void SendToDeviceActivity::perform(const ActivityItem& item)
{
    auto* const watcher
        = new QDBusPendingCallWatcher(kdeConnect::shareText(m_device, item.text), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        if (watcher->isError())
            finishFailed(tr("%1 could not be reached.").arg(m_name));
        else
            finish();
    });
}
