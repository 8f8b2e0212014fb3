#pragma once

#include "GlobalModel.h"
#include "UserSettings.h"

#include <QtQml/qqml.h>

// Types of floors below that the screen's bindings read. They stand here so that those floors need
// not know QML.

struct UserSettingsForeign {
    Q_GADGET
    QML_FOREIGN(UserSettings)
    QML_NAMED_ELEMENT(UserSettings)
    QML_UNCREATABLE("The settings are made by the application.")
};

struct GlobalModelForeign {
    Q_GADGET
    QML_FOREIGN(GlobalModel)
    QML_NAMED_ELEMENT(GlobalModel)
    QML_UNCREATABLE("The model is made by the application.")
};
