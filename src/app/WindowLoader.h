#pragma once

#include <QQmlComponent>
#include <QQmlEngine>
#include <QVariantMap>

#include <memory>

class QQuickWindow;

/// Makes the window. Its types are loaded by a thread of the engine's own from the start on, while
/// the main thread does what does not need them.
class WindowLoader {
public:
    WindowLoader();

    /// The window, not shown yet. Waits for its types. Null where it could not be made; diagnostic
    /// lines then say why. It must not outlive the loader.
    [[nodiscard]] std::unique_ptr<QQuickWindow> make(const QVariantMap& properties);

private:
    QQmlEngine m_engine;
    QQmlComponent m_component;
};
