#include "WindowActivation.h"

#include <QGuiApplication>
#include <QWindow>

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <memory>
#include <optional>

namespace {

constexpr std::uint32_t userAction = 2; // the source of a request

/// What the X server is spoken to by; none where the platform is another one.
xcb_connection_t* xServer()
{
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

xcb_window_t rootOf(xcb_connection_t* server)
{
    return xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
}

/// None where the server does not answer.
xcb_atom_t atom(xcb_connection_t* server, const QByteArray& name)
{
    const auto asked
        = xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name.constData());
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(server, asked, nullptr), &std::free);
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

void sendToRoot(
    xcb_connection_t* server, std::uint32_t mask, const xcb_client_message_event_t& message)
{
    xcb_send_event(server, 0, rootOf(server), mask, reinterpret_cast<const char*>(&message));
}

/// Asks the window manager for something. Nothing here is an application's own accord, which some
/// hold off: the user has just started the program.
void request(xcb_connection_t* server, xcb_window_t window, const QByteArray& what,
    const std::array<std::uint32_t, 2>& values)
{
    xcb_client_message_event_t message {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom(server, what);
    std::copy(values.begin(), values.end(), std::begin(message.data.data32));
    sendToRoot(
        server, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY, message);
}

/// Nothing where the window has no such property.
std::optional<std::uint32_t> number(
    xcb_connection_t* server, xcb_window_t window, const QByteArray& property)
{
    const auto asked
        = xcb_get_property(server, 0, window, atom(server, property), XCB_ATOM_CARDINAL, 0, 1);
    const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> reply(
        xcb_get_property_reply(server, asked, nullptr), &std::free);
    std::uint32_t value = 0;
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) != sizeof value)
        return std::nullopt;
    std::memcpy(&value, xcb_get_property_value(reply.get()), sizeof value);
    return value;
}

/// The user wants the window where he is. Some window managers would only say that it is elsewhere.
void bringToWorkspace(xcb_connection_t* server, xcb_window_t window)
{
    constexpr std::uint32_t all = 0xFFFFFFFF;
    const auto here = number(server, rootOf(server), "_NET_CURRENT_DESKTOP");
    const auto there = number(server, window, "_NET_WM_DESKTOP");
    if (here && there && *there != *here && *there != all)
        request(server, window, "_NET_WM_DESKTOP", { *here, userAction });
}

/// Qt asks by the time of the last event that this program had, which window managers hold to be
/// older than what the user did since.
void requestKeyboard(xcb_connection_t* server, xcb_window_t window, std::uint32_t time)
{
    request(server, window, "_NET_ACTIVE_WINDOW", { userAction, time });
}

/// The window of the program, as far as it is shown; also while it is minimised.
QWindow* shownWindow()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    const auto shown = std::find_if(windows.begin(), windows.end(),
        [](const QWindow* window) { return window->type() == Qt::Window && window->isVisible(); });
    return shown == windows.end() ? nullptr : *shown;
}

} // namespace

void activateWindow(const Activation& activation)
{
    QWindow* const window = shownWindow();
    if (!window)
        return;
    // Qt 6.4 has no other way to be given a token. It removes it when it has used it.
    if (!activation.token.isEmpty()
        && QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        qputenv("XDG_ACTIVATION_TOKEN", activation.token.toLatin1());
    window->setWindowStates(window->windowStates() & ~Qt::WindowMinimized);
    window->raise();
    xcb_connection_t* const server = xServer();
    const auto id = static_cast<xcb_window_t>(server ? window->winId() : 0);
    if (server)
        bringToWorkspace(server, id);
    window->requestActivate();
    if (server) {
        // A start from a terminal has no time; the protocol then knows "now".
        requestKeyboard(server, id, activation.time().value_or(XCB_CURRENT_TIME));
        xcb_flush(server);
    }
}

void endStartup(const Activation& activation)
{
    xcb_connection_t* const server = xServer();
    if (!server || activation.startupId.isEmpty())
        return;
    const xcb_window_t sender = xcb_generate_id(server);
    xcb_create_window(server, XCB_COPY_FROM_PARENT, sender, rootOf(server), 0, 0, 1, 1, 0,
        XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_client_message_event_t message {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 8;
    message.window = sender;
    message.type = atom(server, "_NET_STARTUP_INFO_BEGIN");
    // With the zero at its end, which tells that no further part follows.
    const QByteArray text = "remove: ID=" + activation.startupId.toLatin1();
    const auto length = static_cast<std::size_t>(text.size()) + 1;
    for (std::size_t at = 0; at < length; at += sizeof message.data) {
        std::memset(&message.data, 0, sizeof message.data);
        std::memcpy(
            &message.data, text.constData() + at, std::min(sizeof message.data, length - at));
        sendToRoot(server, XCB_EVENT_MASK_PROPERTY_CHANGE, message);
        message.type = atom(server, "_NET_STARTUP_INFO");
    }
    xcb_destroy_window(server, sender);
    xcb_flush(server);
}
