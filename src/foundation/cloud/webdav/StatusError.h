#pragma once

#include "FileError.h"

namespace mirror {

/// What an HTTP status that is no success means, and that as a clause in our words, without
/// anything that the server wrote.
[[nodiscard]] FileError errorOfStatus(int status);

} // namespace mirror
