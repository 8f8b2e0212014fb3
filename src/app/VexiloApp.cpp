#include "VexiloApp.h"

#include "Appearance.h"
#include "RootViewController.h"
#include "WebPage.h"
#include "WindowLoader.h"
#include "WindowMemory.h"

#include <QQuickWindow>
#include <QTimer>

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto answerTime = 100ms;

} // namespace

VexiloApp::VexiloApp(WindowLoader& windowLoader)
    : m_windowLoader(windowLoader)
{
    // Queued: the setter notifies before it saves, and the theme is read from what was saved.
    connect(
        &m_userSettings, &UserSettings::themeChanged, this,
        [this] { m_utilities.overrideDisplayMode(); }, Qt::QueuedConnection);
    connect(&m_contentView, &ContentView::showSettingsChanged, this, &VexiloApp::followSettings);
    connect(&m_contentView, &ContentView::showHistoryChanged, this, &VexiloApp::followHistory);
}

VexiloApp::~VexiloApp() = default;

bool VexiloApp::start()
{
    // The first amount costs its library's start: paid while types are loaded.
    m_contentView.calculate();
    (void)m_contentView.totalText();
    if (!makeWindow())
        return false;

    // All before the window is seen, so that it is never painted in the wrong theme or size.
    m_utilities.overrideDisplayMode();
    m_userSettings.save();
    m_contentView.appear();
    connect(m_window.get(), &QQuickWindow::frameSwapped, this, &VexiloApp::becameVisible,
        Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
    m_windowMemory = std::make_unique<WindowMemory>(*m_window);
    showWhenAppearanceIsKnown();
    return true;
}

bool VexiloApp::makeWindow()
{
    m_window = m_windowLoader.make({
        { QStringLiteral("app"), QVariant::fromValue(this) },
        { QStringLiteral("contentView"), QVariant::fromValue(&m_contentView) },
    });
    if (!m_window)
        return false;
    m_rootViewController = new RootViewController(m_window.get());
    connect(m_rootViewController, &RootViewController::presentedChanged, this,
        &VexiloApp::activityViewControllerChanged);
    return true;
}

void VexiloApp::showWhenAppearanceIsKnown()
{
    const QList<Appearance*> windows = Appearance::connected();
    if (windows.isEmpty() || windows.first()->known()) {
        m_windowMemory->show();
        return;
    }
    // A desktop that is slow to answer is not waited for: the window may change its colours then.
    auto* const deadline = new QTimer(m_window.get());
    deadline->setSingleShot(true);
    connect(deadline, &QTimer::timeout, m_windowMemory.get(), &WindowMemory::show);
    Appearance* const appearance = windows.first();
    connect(appearance, &Appearance::becameKnown, deadline, [this, deadline] {
        if (!deadline->isActive())
            return;
        deadline->stop();
        m_windowMemory->show();
    });
    deadline->start(answerTime);
}

void VexiloApp::followSettings()
{
    const auto make = [this] {
        auto view = std::make_unique<SettingsView>(m_userSettings, m_contentView.refreshInfo());
        connect(view.get(), &SettingsView::refreshInfoChanged, &m_contentView,
            &ContentView::setRefreshInfo);
        return view;
    };
    follow(m_contentView.showSettings(), m_settingsView, make, &VexiloApp::settingsViewChanged);
}

void VexiloApp::followHistory()
{
    const auto make = [this] {
        return std::make_unique<HistoryView>(
            m_userSettings, m_persistenceController.container->viewContext());
    };
    follow(m_contentView.showHistory(), m_historyView, make, &VexiloApp::historyViewChanged);
}

/// Makes a screen's state anew when the screen is to be shown, and lets go of it afterwards.
template <class View, class Make>
void VexiloApp::follow(
    bool isShown, std::unique_ptr<View>& view, const Make& make, void (VexiloApp::*changed)())
{
    if (isShown == (view != nullptr))
        return;
    std::unique_ptr<View> previous = std::move(view);
    if (isShown)
        view = make();
    Q_EMIT(this->*changed)();
    // It is the screen's own signal that closes it.
    if (previous)
        previous.release()->deleteLater();
}

UIActivityViewController* VexiloApp::activityViewController() const
{
    return m_rootViewController ? m_rootViewController->presented() : nullptr;
}

void VexiloApp::dismissActivityViewController() { m_rootViewController->dismiss(); }

void VexiloApp::helpOnWebsite() { openWebPage(m_global.websiteHelp); }
