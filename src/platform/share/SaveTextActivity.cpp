#include "SaveTextActivity.h"

#include "ActivityTypes.h"
#include "PortalInterface.h"

ActivityType SaveTextActivity::activityType() const { return activityType::saveText; }

void SaveTextActivity::ask(const ActivityItem&)
{
    whenPortalHas(FileChooser::interface(), this, [this] { Q_EMIT available(); });
}

QByteArray SaveTextActivity::contentOf(const QString& text) const { return text.toUtf8(); }
