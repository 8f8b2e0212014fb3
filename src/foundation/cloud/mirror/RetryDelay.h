#pragma once

#include "FileError.h"

namespace mirror {

/// How long to wait after a failed sync; nothing: until the credentials change, or the user does
/// something. `attempt` counts the failures in a row, this one included; `random` from 0 to 1
/// spreads the devices.
[[nodiscard]] std::optional<std::chrono::milliseconds> retryDelay(
    const FileError& error, int attempt, double random);

} // namespace mirror
