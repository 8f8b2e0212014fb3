#pragma once

#include "CloudSetup.h"

/// How the saved bills of the program's containers stand in the user's cloud. The model was loaded
/// before: a store is open.
[[nodiscard]] CloudSetup billMirror();
