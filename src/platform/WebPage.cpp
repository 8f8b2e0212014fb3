#include "WebPage.h"

#include "Diagnostics.h"

#include <QDesktopServices>
#include <QUrl>

void openWebPage(const QString& address)
{
    const QUrl url(address, QUrl::StrictMode);
    if (!url.isValid() || url.isRelative())
        fatalError("Unexpectedly found nil while unwrapping an Optional value");
    if (!QDesktopServices::openUrl(url))
        printDiagnostic("No browser opens " + address.toStdString());
}
