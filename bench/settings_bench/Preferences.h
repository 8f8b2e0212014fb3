#pragma once

#include "XServer.h"

#include <string>

/// The program's preferences on the disk, in the folder that XDG_CONFIG_HOME names.
namespace preferences {

/// The next start is a first launch.
void remove();

/// Whether the file says so now, as in "serviceGood=7".
[[nodiscard]] bool say(const std::string& line);

/// Waits until the file says so and returns when that was seen, to about a millisecond. Throws
/// MeasureError after five seconds.
Clock::time_point waitUntilTheySay(const std::string& line);

} // namespace preferences
