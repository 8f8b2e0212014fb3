#pragma once

#include "ContentView.h"
#include "GlobalModel.h"
#include "HistoryView.h"
#include "PersistenceController.h"
#include "SettingsView.h"
#include "UIActivityViewController.h"
#include "UserSettings.h"
#include "Utilities.h"

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

#include <memory>

class QQuickWindow;
class RootViewController;
class WindowLoader;
class WindowMemory;

/// The application: builds the shared objects, opens the one window, applies the theme and keeps it
/// applied, and offers the Help command.
class VexiloApp : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The process has one application.")
    /// The settings screen's state; null while the screen is closed.
    Q_PROPERTY(SettingsView* settingsView READ settingsView NOTIFY settingsViewChanged)
    /// The saved bills screen's state; null while the screen is closed.
    Q_PROPERTY(HistoryView* historyView READ historyView NOTIFY historyViewChanged)
    /// The share sheet's state; null while none is presented.
    Q_PROPERTY(UIActivityViewController* activityViewController READ activityViewController NOTIFY
            activityViewControllerChanged)

public:
    /// The loader must outlive the application.
    explicit VexiloApp(WindowLoader& windowLoader);
    ~VexiloApp() override;

    /// Opens the window. False where it could not be made; diagnostic lines then say why.
    [[nodiscard]] bool start();

    /// Opens the help page in the user's browser. The address is a constant of the program: one
    /// that is no absolute address stops the process.
    Q_INVOKABLE void helpOnWebsite();

    /// The share sheet has slid away.
    Q_INVOKABLE void dismissActivityViewController();

    [[nodiscard]] SettingsView* settingsView() const { return m_settingsView.get(); }
    [[nodiscard]] HistoryView* historyView() const { return m_historyView.get(); }
    [[nodiscard]] UIActivityViewController* activityViewController() const;

Q_SIGNALS:
    void settingsViewChanged();
    void historyViewChanged();
    void activityViewControllerChanged();
    /// Once, after the first frame.
    void becameVisible();

private:
    [[nodiscard]] bool makeWindow();
    void showWhenAppearanceIsKnown();
    void followSettings();
    void followHistory();
    template <class View, class Make>
    void follow(
        bool isShown, std::unique_ptr<View>& view, const Make& make, void (VexiloApp::*changed)());

    WindowLoader& m_windowLoader;

    PersistenceController m_persistenceController = PersistenceController::shared();
    UserSettings& m_userSettings = UserSettings::shared();
    GlobalModel& m_global = GlobalModel::shared();
    // Held for the screens' interface: nothing happens on going to the background or coming back.
    [[maybe_unused]] Qt::ApplicationState m_scenePhase = Qt::ApplicationInactive;
    Utilities m_utilities;

    ContentView m_contentView { m_userSettings, m_persistenceController.container->viewContext() };
    std::unique_ptr<SettingsView> m_settingsView;
    std::unique_ptr<HistoryView> m_historyView;
    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<WindowMemory> m_windowMemory; // of the window
    QPointer<RootViewController> m_rootViewController; // of the window
};
