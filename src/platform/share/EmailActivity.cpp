#include "EmailActivity.h"

#include "ActivityTypes.h"
#include "PortalInterface.h"
#include "SchemeHandler.h"

#include <QGuiApplication>

EmailActivity::EmailActivity(QObject* parent)
    : Activity(parent)
{
    connect(&m_composer, &EmailComposer::finished, this, &EmailActivity::report);
}

ActivityType EmailActivity::activityType() const { return activityType::email; }

void EmailActivity::ask(const ActivityItem&)
{
    // xdg-email opens what opens mailto addresses; it is installed where nothing does, too.
    if (hasHandlerFor(QStringLiteral("mailto")))
        Q_EMIT available();
    else
        whenPortalHas(
            QStringLiteral("org.freedesktop.portal.Email"), this, [this] { Q_EMIT available(); });
}

void EmailActivity::perform(const ActivityItem& item)
{
    m_composer.compose(QGuiApplication::applicationDisplayName(), item.text);
}

void EmailActivity::report(EmailComposer::Outcome outcome)
{
    if (outcome == EmailComposer::Composed)
        finish();
    else if (outcome == EmailComposer::Cancelled)
        finishCancelled();
    else
        finishFailed(tr("No e-mail program could be opened. Copy the text instead."));
}
