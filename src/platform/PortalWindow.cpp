#include "PortalWindow.h"

#include <QGuiApplication>
#include <QWindow>

QString parentWindowForPortal()
{
    const QWindow* const window = QGuiApplication::focusWindow();
    if (!window || QGuiApplication::platformName() != QLatin1String("xcb"))
        return {};
    return QLatin1String("x11:") + QString::number(window->winId(), 16);
}
