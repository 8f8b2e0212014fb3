#pragma once

#include <QString>

/// Whether a program on this desktop opens addresses of a scheme, such as "mailto", by the user's
/// and the system's associations (mime-apps specification 1.0.1). Reads a few small files.
[[nodiscard]] bool hasHandlerFor(const QString& scheme);
