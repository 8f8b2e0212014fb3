#pragma once

#include <QString>

/// From here on the process finds no session bus, and of a desktop's files what is in the folder.
void useNoDesktop(const QString& folder);
