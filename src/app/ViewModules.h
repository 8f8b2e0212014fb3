#pragma once

#include <QtQml/qqmlextensionplugin.h>

// The modules of the views stand in static libraries, from which the program that shows them takes
// none that nothing names. To be included by one of its sources.
Q_IMPORT_QML_PLUGIN(Vexilo_AppPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_CalculatorPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_HistoryPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_SettingsPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_SharePlugin)
