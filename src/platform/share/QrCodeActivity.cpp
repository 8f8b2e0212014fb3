#include "QrCodeActivity.h"

#include "ActivityTypes.h"
#include "QrCode.h"

ActivityType QrCodeActivity::activityType() const { return activityType::qrCode; }

void QrCodeActivity::ask(const ActivityItem& item)
{
    if (QrCode::encode(item.text))
        Q_EMIT available();
}

void QrCodeActivity::perform(const ActivityItem& item)
{
    m_text = item.text;
    Q_EMIT textChanged();
}
