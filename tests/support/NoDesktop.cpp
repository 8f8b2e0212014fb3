#include "NoDesktop.h"

#include <QtGlobal>

void useNoDesktop(const QString& folder)
{
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    for (const char* variable :
        { "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS", "XDG_DATA_HOME", "XDG_DATA_DIRS" })
        qputenv(variable, folder.toUtf8());
}
