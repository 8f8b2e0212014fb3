#include "SavePdfActivity.h"

#include "ActivityTypes.h"
#include "PdfDocument.h"
#include "PortalInterface.h"
#include "PrintActivity.h"

#include <QLocale>

ActivityType SavePdfActivity::activityType() const { return activityType::savePdf; }

void SavePdfActivity::ask(const ActivityItem&)
{
    whenPortalLacks(PrintActivity::interface(), this,
        [this] { whenPortalHas(FileChooser::interface(), this, [this] { Q_EMIT available(); }); });
}

QByteArray SavePdfActivity::contentOf(const QString& text) const
{
    return pdfOf(text, usualPage(QLocale::system()));
}
