#include "Utilities.h"

#include "Appearance.h"
#include "UserSettings.h"

namespace {

InterfaceStyle interfaceStyle(qint64 theme)
{
    switch (theme) {
    case 2:
        return InterfaceStyle::Dark;
    case 1:
        return InterfaceStyle::Light;
    default:
        return InterfaceStyle::Unspecified;
    }
}

} // namespace

void Utilities::overrideDisplayMode() const
{
    const UserSettings stored;
    const InterfaceStyle style = interfaceStyle(stored.theme());
    const QList<Appearance*> windows = Appearance::connected();
    if (!windows.isEmpty())
        windows.first()->setOverrideStyle(style);
}
