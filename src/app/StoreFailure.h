#pragma once

#include <QString>

/// Shows in a window of its own why the saved bills cannot be opened, and returns when the user has
/// closed it. To be called before the application's event loop runs: it runs one.
void showStoreFailure(const QString& message);
