#include "CopyExcerptActivity.h"

#include "ActivityTypes.h"

#include <QClipboard>
#include <QGuiApplication>

ActivityType CopyExcerptActivity::activityType() const { return activityType::copyExcerpt; }

void CopyExcerptActivity::ask(const ActivityItem& item)
{
    if (!item.excerpt)
        return;
    m_excerpt = *item.excerpt;
    Q_EMIT available();
}

void CopyExcerptActivity::perform(const ActivityItem&)
{
    QGuiApplication::clipboard()->setText(m_excerpt.text);
    finish();
}
