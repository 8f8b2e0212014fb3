#include <QtQml/qqmlextensionplugin.h>
#include <QtQuickTest>

Q_IMPORT_QML_PLUGIN(Vexilo_ControlsPlugin)

QUICK_TEST_MAIN(controls)
