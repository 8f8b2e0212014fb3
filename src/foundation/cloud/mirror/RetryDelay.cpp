#include "RetryDelay.h"

#include <algorithm>

namespace mirror {

namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

constexpr int LockedAttempts = 10;
constexpr double Spread = 0.2;

} // namespace

milliseconds doubledDelay(milliseconds first, milliseconds most, int attempt)
{
    milliseconds delay = first;
    for (int i = 1; i < attempt && delay < most; ++i)
        delay *= 2;
    return std::min(delay, most);
}

milliseconds delayAfterFailure(int attempt, double random)
{
    const auto delay = static_cast<double>(doubledDelay(5s, 15min, attempt).count());
    return milliseconds(qint64(delay * (1 - Spread + 2 * Spread * random)));
}

std::optional<milliseconds> retryDelay(const FileError& error, int attempt, double random)
{
    switch (error.kind) {
    case FileError::Kind::Unauthorised:
    case FileError::Kind::Untrusted:
    case FileError::Kind::Cancelled:
        return std::nullopt;
    case FileError::Kind::Locked:
        return attempt <= LockedAttempts ? doubledDelay(5s, 60s, attempt)
                                         : delayAfterFailure(attempt - LockedAttempts, random);
    case FileError::Kind::Busy:
        if (error.retryAfter) // however long a server puts it, look again within a day
            return milliseconds(std::clamp<std::chrono::seconds>(*error.retryAfter, 1s, 24h));
        return doubledDelay(1min, 1h, attempt);
    case FileError::Kind::TooLarge:
        return 1h;
    default:
        return delayAfterFailure(attempt, random);
    }
}

} // namespace mirror
