#include "WindowLoader.h"

#include "Diagnostics.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QUrl>

WindowLoader::WindowLoader()
    : m_component(&m_engine,
        QUrl(QStringLiteral("qrc:/qt-project.org/imports/Vexilo/App/MainWindow.qml")),
        QQmlComponent::Asynchronous)
{
    QObject::connect(&m_engine, &QQmlEngine::quit, qGuiApp, &QGuiApplication::quit);
    QObject::connect(&m_turns, &QTimer::timeout, qGuiApp, [this] { takeStep(); });
}

void WindowLoader::prepare(std::vector<std::function<void()>> steps)
{
    m_steps = std::move(steps);
    m_nextStep = 0;
    if (m_component.isLoading())
        m_turns.start();
}

void WindowLoader::takeStep()
{
    if (m_nextStep < m_steps.size() && m_component.isLoading())
        m_steps.at(m_nextStep++)();
    else
        m_turns.stop();
}

std::unique_ptr<QQuickWindow> WindowLoader::make(const QVariantMap& properties)
{
    if (m_component.isLoading()) {
        QEventLoop loading;
        QObject::connect(&m_component, &QQmlComponent::statusChanged, &loading, &QEventLoop::quit);
        loading.exec();
    }
    std::unique_ptr<QObject> object(m_component.createWithInitialProperties(properties));
    std::unique_ptr<QQuickWindow> window(qobject_cast<QQuickWindow*>(object.get()));
    if (window)
        (void)object.release();
    else
        printDiagnostic(m_component.errorString().toStdString());
    return window;
}
