#pragma once

#include <QString>

/// What a desktop may wish of the size of texts, beside their natural size 1.
inline constexpr double leastTextScale = 0.5;
inline constexpr double greatestTextScale = 3.0;

/// How much larger a program has to draw its texts to fulfil the wish, on a screen of this device
/// pixel ratio. GNOME's settings daemon puts the wish into the resolution that it gives X11
/// programs as well, and Qt makes the device pixel ratio of that: there it is fulfilled already,
/// which shows in a ratio that is a whole multiple of the wish.
[[nodiscard]] double remainingTextScale(
    double wish, const QString& platform, double devicePixelRatio);
