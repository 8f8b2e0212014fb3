#pragma once

#include <QStringList>
#include <QUrl>

/// The user's folder for documents, wherever the desktop has it; it need not exist yet. A desktop
/// without any stops the process.
[[nodiscard]] QUrl userDocumentsFolder();

/// The first of the folders; an empty list stops the process.
[[nodiscard]] QUrl firstFolderOf(const QStringList& folders);
