#pragma once

#include <QQmlComponent>
#include <QQmlEngine>
#include <QTimer>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <vector>

class QQuickWindow;

/// Makes the window. Its types are loaded by a thread of the engine's own from the start on, while
/// the main thread does what does not need them.
class WindowLoader {
public:
    WindowLoader();

    /// Takes steps that prepare what the window needs, and could as well be left to it: one in each
    /// turn of the event loop while the types are loaded, because the thread that loads them asks
    /// the main thread for this and that. Those left when they are there are not taken.
    void prepare(std::vector<std::function<void()>> steps);

    /// The window, not shown yet. Waits for its types. Null where it could not be made; diagnostic
    /// lines then say why. It must not outlive the loader.
    [[nodiscard]] std::unique_ptr<QQuickWindow> make(const QVariantMap& properties);

private:
    void takeStep();

    QTimer m_turns;
    std::vector<std::function<void()>> m_steps;
    std::size_t m_nextStep = 0;
    QQmlEngine m_engine;
    QQmlComponent m_component;
};
