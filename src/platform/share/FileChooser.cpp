#include "FileChooser.h"

#include "PortalRequest.h"
#include "PortalWindow.h"

#include <QUrl>

QString FileChooser::interface() { return QStringLiteral("org.freedesktop.portal.FileChooser"); }

void FileChooser::askWhereToSave(const QString& title, const QString& name)
{
    m_request = new PortalRequest(this);
    connect(m_request, &PortalRequest::finished, this,
        [this](PortalRequest::Outcome outcome, const QVariantMap& results) {
            if (outcome == PortalRequest::Done)
                takeAddress(results.value(QStringLiteral("uris")).toStringList().value(0));
            else if (outcome == PortalRequest::Cancelled)
                Q_EMIT cancelled();
            else
                Q_EMIT failed(tr("The desktop did not ask where to save."));
        });
    m_request->call(interface(), QStringLiteral("SaveFile"), { parentWindowForPortal(), title },
        { { QStringLiteral("current_name"), name } });
}

void FileChooser::withdraw()
{
    if (m_request)
        m_request->withdraw();
}

void FileChooser::takeAddress(const QString& address)
{
    const QUrl url(address, QUrl::StrictMode);
    if (url.isLocalFile())
        Q_EMIT chosen(url.toLocalFile());
    else
        Q_EMIT failed(tr("Only folders of this computer can be saved to."));
}
