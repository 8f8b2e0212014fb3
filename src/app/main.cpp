#include "BillMirror.h"
#include "CloudService.h"
#include "CommandLine.h"
#include "DesktopApplication.h"
#include "FirstView.h"
#include "FontStart.h"
#include "GlobalModel.h"
#include "Icon.h"
#include "Language.h"
#include "PersistenceController.h"
#include "StoreFailure.h"
#include "TerminationSignals.h"
#include "UserDefaults.h"
#include "VexiloApp.h"
#include "ViewModules.h"
#include "WindowActivation.h"
#include "WindowIcon.h"
#include "WindowLoader.h"

#include <QGuiApplication>
#include <QLocale>
#include <QQuickWindow>

#include <cstdlib>
#include <functional>
#include <optional>
#include <vector>

#include <malloc.h>

namespace {

/// The software renderer starts faster and takes less than half the memory of OpenGL, and the
/// screens need nothing that it lacks. Who chose another one in the environment keeps it.
void chooseRenderer()
{
    const bool chosen = qEnvironmentVariableIsSet("QT_QUICK_BACKEND")
        || qEnvironmentVariableIsSet("QSG_RHI_BACKEND") || qEnvironmentVariableIsSet("QSG_RHI");
    if (!chosen)
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

/// The layout follows the user's first language, in which there need not be texts, and which need
/// not be that of the numbers.
Qt::LayoutDirection layoutDirection()
{
    return QLocale(QLocale::system().uiLanguages().value(0)).textDirection();
}

std::vector<std::function<void()>> preparationOfTheFirstView()
{
    std::vector<std::function<void()>> steps;
    for (const QFont& font : firstFonts())
        steps.emplace_back([font] { loadFont(font); });
    for (const QString& icon : firstIcons())
        steps.emplace_back([icon] { Icon::prepare(icon, qGuiApp->devicePixelRatio()); });
    return steps;
}

} // namespace

int main(int argc, char* argv[])
{
    if (const std::optional<int> code = answerCommandLine(argc, argv))
        return *code;
    // It would print every message of the session bus, the password of a cloud account among them.
    qunsetenv("QDBUS_DEBUG");
    // At the start its threads would wait for each other with one; later they hardly ever allocate
    // at the same time, and each arena keeps half a megabyte to itself.
    mallopt(M_ARENA_MAX, 2);
    chooseRenderer();
    QGuiApplication::setApplicationName(AppName);
    QGuiApplication::setOrganizationName(CompanyName);
    QGuiApplication::setDesktopFileName(QStringLiteral("com.morrowick.vexilo"));
    const Activation activation = Activation::fromEnvironment();
    QGuiApplication application(argc, argv);
    FontStart fontStart;
    std::optional<WindowLoader> windowLoader;
    // Before the thread starts: its end is told once, to who is there.
    QObject::connect(&fontStart, &FontStart::finished, &application,
        [&windowLoader] { windowLoader->prepare(preparationOfTheFirstView()); });
    fontStart.start();
    windowLoader.emplace();
    DesktopApplication desktopApplication(activation);
    // While the bus answers; whatever opens or writes something comes after its answer.
    translateTexts(application);
    QGuiApplication::setLayoutDirection(layoutDirection());
    (void)GlobalModel::shared();
    if (!desktopApplication.isToRun()) {
        endStartup(activation);
        // Nothing is open, and the types that are still being loaded are not waited for.
        std::quick_exit(EXIT_SUCCESS);
    }
    QObject::connect(
        &desktopApplication, &DesktopApplication::activated, &application, &activateWindow);
    QObject::connect(&application, &QGuiApplication::lastWindowClosed, &desktopApplication,
        &DesktopApplication::stopAnswering);

    const TerminationSignals terminationSignals;
    store::setStoreFailureAlert(showStoreFailure);
    CloudService cloud(NSUbiquitousKeyValueStore::defaultStore());
    VexiloApp app(*windowLoader);
    QObject::connect(&app, &VexiloApp::becameVisible, &cloud, [&cloud] {
        cloud.start(billMirror());
        cloud.setActive(QGuiApplication::applicationState() == Qt::ApplicationActive);
    });
    QObject::connect(&app, &VexiloApp::becameVisible, &setWindowIcon);
    // What the start needed once.
    QObject::connect(&app, &VexiloApp::becameVisible, [] { malloc_trim(0); });
    QObject::connect(&application, &QGuiApplication::applicationStateChanged, &cloud,
        [&cloud](Qt::ApplicationState state) { cloud.setActive(state == Qt::ApplicationActive); });
    if (!app.start())
        return EXIT_FAILURE;
    const int exitCode = QGuiApplication::exec();
    UserDefaults::standard().synchronize();
    desktopApplication.leave();
    return exitCode;
}
