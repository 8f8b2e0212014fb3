#include "WindowIcon.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPixmap>

void setWindowIcon()
{
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        return;
    const QString file = QCoreApplication::applicationDirPath()
        + QLatin1String("/../share/icons/hicolor/%1x%1/apps/") + QGuiApplication::desktopFileName()
        + QLatin1String(".png");
    QIcon icon;
    // With the format named, or every plugin of image formats would be asked what the file is.
    for (const int size : { 16, 32, 48, 128 })
        icon.addPixmap(QPixmap(file.arg(size), "PNG"));
    QGuiApplication::setWindowIcon(icon);
}
