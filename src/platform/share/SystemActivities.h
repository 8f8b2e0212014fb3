#pragma once

#include "Activity.h"

/// All destinations that a desktop may have for a plain text, in the order in which they are
/// offered; the devices that can be reached are not among them.
[[nodiscard]] Activities systemActivities();
