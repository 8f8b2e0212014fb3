#pragma once

#include "Layout.h"
#include "PrivateBus.h"

#include <QList>
#include <QQuickWindow>
#include <QString>
#include <QTemporaryDir>

#include <functional>
#include <memory>
#include <vector>

class ContentView;
class FakePortal;
class VexiloApp;
class WindowLoader;

/// One screen of the application, opened from the calculator.
struct Screen {
    QString name;
    int layers = 0; ///< how many sheets, dialogs and menus lie over the calculator
    std::function<void()> open;
};

/// The application in a home of its own, with a bill and two saved ones, one of them of a long
/// description, on a desktop that asks for no motion. Made before the application object, whose bus
/// and folders it chooses. What fails, fails the running test.
class ShownApp {
public:
    ShownApp();
    ~ShownApp();

    /// Starts it on its desktop, reading from left to right. Once, with an application object.
    void begin();
    void end();
    /// Starts it anew: the direction is that of its whole life.
    void start(Qt::LayoutDirection direction);
    void addBills();

    [[nodiscard]] QQuickWindow& window() { return *m_window; }
    [[nodiscard]] ContentView& view() { return *m_view; }
    [[nodiscard]] VexiloApp& app() { return *m_app; }

    [[nodiscard]] QList<Screen> screens();
    void show(const Screen& screen);
    void openList();
    /// Back to the calculator.
    void close();

    /// To a width in points.
    void resize(int width) const;
    /// The desktop wishes for texts of another size; 1 is the natural one.
    void scaleText(double scale);
    /// Waits until everything stands where it stays.
    void rest() const;

    /// The dialogs, sheets and menus over the calculator, in the order in which they were opened.
    [[nodiscard]] QList<const QQuickItem*> layers() const;
    /// What is on top of the window: what was opened last, or the calculator.
    [[nodiscard]] const QQuickItem& top() const;
    [[nodiscard]] std::vector<Drawn> drawn() const { return drawnIn(top()); }

    static void set(QObject& view, const char* flag);

private:
    void openPage();
    void openCode();

    PrivateBus m_bus;
    QTemporaryDir m_home;
    std::unique_ptr<FakePortal> m_portal;
    std::unique_ptr<WindowLoader> m_windowLoader;
    std::unique_ptr<VexiloApp> m_app;
    QQuickWindow* m_window = nullptr;
    ContentView* m_view = nullptr;
};

/// The description that is longer than any row of the list.
[[nodiscard]] QString longDescription();
