#include "TextMessageActivity.h"

#include "ActivityTypes.h"
#include "SchemeHandler.h"

#include <QDesktopServices>
#include <QUrl>

ActivityType TextMessageActivity::activityType() const { return activityType::textMessage; }

void TextMessageActivity::ask(const ActivityItem&)
{
    if (hasHandlerFor(QStringLiteral("sms")))
        Q_EMIT available();
}

void TextMessageActivity::perform(const ActivityItem& item)
{
    // RFC 5724: no recipient yet, and the body percent-encoded.
    const QString address
        = QLatin1String("sms:?body=") + QString::fromLatin1(QUrl::toPercentEncoding(item.text));
    if (QDesktopServices::openUrl(QUrl(address, QUrl::StrictMode)))
        finish();
    else
        finishFailed(tr("No program for text messages could be opened. Copy the text instead."));
}
