#pragma once

#include <QString>

class Bundle;

// The program's version, read afresh from the bundle's information dictionary on every call.

/// "CFBundleShortVersionString", or "x.x" where it is missing or no text.
[[nodiscard]] QString release(const Bundle& bundle);
/// "CFBundleVersion", or "x" where it is missing or no text.
[[nodiscard]] QString build(const Bundle& bundle);
/// Release and build, joined by a full stop: "1.4.27".
[[nodiscard]] QString version(const Bundle& bundle);
