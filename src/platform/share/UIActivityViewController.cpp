#include "UIActivityViewController.h"

#include "KdeConnect.h"
#include "SendToDeviceActivity.h"
#include "SystemActivities.h"

#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QMap>
#include <QPointer>

#include <utility>

using DeviceNames = QMap<QString, QString>; // by their identifiers
Q_DECLARE_METATYPE(DeviceNames)

UIActivityViewController::UIActivityViewController(
    ActivityItems activityItems, std::optional<Activities> applicationActivities)
    : m_items(std::move(activityItems))
    , m_item(combined(m_items))
    , m_applicationActivities(std::move(applicationActivities))
{
}

UIActivityViewController::~UIActivityViewController() = default;

void UIActivityViewController::setExcludedActivityTypes(std::optional<QList<ActivityType>> types)
{
    m_excludedActivityTypes = std::move(types);
}

void UIActivityViewController::setCompletionHandler(ActivityCompletion handler)
{
    m_completion = std::move(handler);
}

void UIActivityViewController::open()
{
    for (const std::shared_ptr<Activity>& activity : systemActivities())
        offer(activity);
    for (const std::shared_ptr<Activity>& activity : m_applicationActivities.value_or(Activities()))
        offer(activity);
    offerDevices();
}

void UIActivityViewController::offer(const std::shared_ptr<Activity>& activity)
{
    if (m_excludedActivityTypes && m_excludedActivityTypes->contains(activity->activityType()))
        return;
    const int order = static_cast<int>(m_offered.size());
    m_offered.push_back(activity);
    Activity* const offered = activity.get();
    connect(
        offered, &Activity::available, this,
        [this, offered, order] {
            m_groups[static_cast<std::size_t>(offered->group())].insert(offered, order);
        },
        Qt::SingleShotConnection);
    connect(offered, &Activity::finished, this,
        [this, offered](const ActivityOutcome& outcome) { take(offered, outcome); });
    offered->ask(m_item);
}

void UIActivityViewController::offerDevices()
{
    qDBusRegisterMetaType<DeviceNames>();
    auto* const watcher = new QDBusPendingCallWatcher(kdeConnect::deviceNames(), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<DeviceNames> reply = *watcher;
        if (reply.isError())
            return;
        const DeviceNames names = reply.value();
        for (auto it = names.cbegin(); it != names.cend(); ++it)
            offer(std::make_shared<SendToDeviceActivity>(it.key(), it.value()));
    });
}

QList<ActivityModel*> UIActivityViewController::groups()
{
    QList<ActivityModel*> groups;
    for (ActivityModel& group : m_groups)
        groups.append(&group);
    return groups;
}

QString UIActivityViewController::failure() const
{
    return m_outcome.error ? m_outcome.error->description : QString();
}

void UIActivityViewController::choose(Activity* activity)
{
    if (m_state != Choosing)
        return;
    m_chosen = activity;
    setState(Performing);
    activity->perform(m_item);
}

void UIActivityViewController::goBack()
{
    if (m_state != Performing || m_chosen->page().isEmpty())
        return;
    Activity* const left = std::exchange(m_chosen, nullptr);
    m_state = Choosing;
    left->stop(); // what it says of that is not heard any more
    Q_EMIT stateChanged();
}

void UIActivityViewController::close()
{
    const QPointer<UIActivityViewController> self(this);
    if (m_state == Performing)
        m_chosen->stop(); // which may finish
    if (self && m_state != Finished)
        finish();
}

void UIActivityViewController::take(const Activity* activity, const ActivityOutcome& outcome)
{
    if (m_state != Performing || activity != m_chosen)
        return;
    m_outcome = outcome;
    if (outcome.error)
        setState(Failed);
    else
        finish();
}

void UIActivityViewController::finish()
{
    const ActivityCompletion completion = std::exchange(m_completion, nullptr);
    // The user is done with the sheet before it goes out of sight.
    m_state = Finished;
    const QPointer<UIActivityViewController> self(this);
    if (completion) {
        const auto type = m_chosen ? std::optional(m_chosen->activityType()) : std::nullopt;
        completion(type, m_outcome.completed, m_outcome.returnedItems, m_outcome.error);
    }
    if (self)
        Q_EMIT stateChanged();
}

void UIActivityViewController::setState(State state)
{
    m_state = state;
    Q_EMIT stateChanged();
}
