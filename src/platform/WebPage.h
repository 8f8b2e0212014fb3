#pragma once

#include <QString>

/// Opens a page in the user's browser. The address is a constant of the program: one that is no
/// absolute address stops the process. Where no browser takes it, a diagnostic line says so.
void openWebPage(const QString& address);
