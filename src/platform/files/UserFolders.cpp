#include "UserFolders.h"

#include "Diagnostics.h"

#include <QStandardPaths>

QUrl userDocumentsFolder()
{
    return firstFolderOf(QStandardPaths::standardLocations(QStandardPaths::DocumentsLocation));
}

QUrl firstFolderOf(const QStringList& folders)
{
    if (folders.isEmpty())
        fatalError("Unexpectedly found nil while unwrapping an Optional value");
    return QUrl::fromLocalFile(folders.first());
}
