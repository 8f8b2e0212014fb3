#pragma once

#include "FileError.h"

namespace mirror {

/// How long to wait after a failed sync; nothing: until the credentials change, or the user does
/// something. `attempt` counts the failures in a row, this one included; `random` from 0 to 1
/// spreads the devices.
[[nodiscard]] std::optional<std::chrono::milliseconds> retryDelay(
    const FileError& error, int attempt, double random);

/// The first delay, doubled with each further attempt. The attempts are counted from 1.
[[nodiscard]] std::chrono::milliseconds doubledDelay(
    std::chrono::milliseconds first, std::chrono::milliseconds most, int attempt);

/// Of a server that fails or cannot be reached; random is from 0 to 1.
[[nodiscard]] std::chrono::milliseconds delayAfterFailure(int attempt, double random);

} // namespace mirror
