#include "LibSecret.h"

#include <QLibrary>

#include <mutex>

namespace mirror {

namespace {

// Not linked, but taken from what is loaded anyway: each library more delays the program's start.
template <class Function> Function function(const char* library, const char* name)
{
    return reinterpret_cast<Function>(QLibrary::resolve(QString::fromLatin1(library), 0, name));
}

constexpr int sessionBus = 2; // G_BUS_TYPE_SESSION

} // namespace

void surviveLossOfBus()
{
    using BusGetSync = void* (*)(int type, void* cancellable, void** error);
    using SetExitOnClose = void (*)(void* connection, int exits);
    static std::once_flag once;
    std::call_once(once, [] {
        const auto bus = function<BusGetSync>("gio-2.0", "g_bus_get_sync");
        const auto setExitOnClose
            = function<SetExitOnClose>("gio-2.0", "g_dbus_connection_set_exit_on_close");
        // This reference is kept: the connection of all that comes later is the same then.
        void* const connection = bus ? bus(sessionBus, nullptr, nullptr) : nullptr;
        if (connection && setExitOnClose)
            setExitOnClose(connection, 0);
    });
}

void endKeyringSession()
{
    if (const auto end = function<void (*)()>("secret-1", "secret_service_disconnect"))
        end();
}

} // namespace mirror
