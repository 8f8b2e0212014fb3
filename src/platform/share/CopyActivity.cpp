#include "CopyActivity.h"

#include "ActivityTypes.h"

#include <QClipboard>
#include <QGuiApplication>

ActivityType CopyActivity::activityType() const { return activityType::copy; }

void CopyActivity::ask(const ActivityItem&) { Q_EMIT available(); }

void CopyActivity::perform(const ActivityItem& item)
{
    QGuiApplication::clipboard()->setText(item.text);
    finish();
}
