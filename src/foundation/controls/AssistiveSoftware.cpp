#include "AssistiveSoftware.h"

AssistiveSoftware::AssistiveSoftware(QObject* parent)
    : QObject(parent)
{
    QAccessible::installActivationObserver(this);
}

AssistiveSoftware::~AssistiveSoftware() { QAccessible::removeActivationObserver(this); }

void AssistiveSoftware::accessibilityActiveChanged(bool active)
{
    if (active == m_connected)
        return;
    m_connected = active;
    Q_EMIT connectedChanged();
}
