#pragma once

#include "QrCodeActivity.h"
#include "UIActivityViewController.h"

#include <QtQml/qqml.h>

// What the sheet's bindings read. It stands here so that the sheet's rules need not know QML.

struct UIActivityViewControllerForeign {
    Q_GADGET
    QML_FOREIGN(UIActivityViewController)
    QML_NAMED_ELEMENT(UIActivityViewController)
    QML_UNCREATABLE("A sheet is made by whoever presents it.")
};

struct ActivityModelForeign {
    Q_GADGET
    QML_FOREIGN(ActivityModel)
    QML_NAMED_ELEMENT(ActivityModel)
    QML_UNCREATABLE("A sheet makes its groups.")
};

struct ActivityForeign {
    Q_GADGET
    QML_FOREIGN(Activity)
    QML_NAMED_ELEMENT(Activity)
    QML_UNCREATABLE("A sheet makes its activities.")
};

struct QrCodeActivityForeign {
    Q_GADGET
    QML_FOREIGN(QrCodeActivity)
    QML_NAMED_ELEMENT(QrCodeActivity)
    QML_UNCREATABLE("A sheet makes its activities.")
};
