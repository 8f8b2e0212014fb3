#include "StoreFailure.h"

#include "Diagnostics.h"
#include "Utilities.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QUrl>

#include <memory>

void showStoreFailure(const QString& message)
{
    QQmlEngine engine;
    QObject::connect(&engine, &QQmlEngine::quit, qGuiApp, &QGuiApplication::quit);
    QQmlComponent component(
        &engine, QUrl(QStringLiteral("qrc:/qt-project.org/imports/Vexilo/App/StoreFailure.qml")));
    const std::unique_ptr<QObject> window(
        component.createWithInitialProperties({ { QStringLiteral("message"), message } }));
    if (!window) {
        printDiagnostic(component.errorString().toStdString());
        return;
    }
    Utilities().overrideDisplayMode();
    QGuiApplication::exec();
}
