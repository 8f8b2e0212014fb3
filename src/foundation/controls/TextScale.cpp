#include "TextScale.h"

#include <cmath>

namespace {

/// The daemon cuts the resolution to whole dots per inch.
constexpr double resolutionStep = 1.0 / 96.0;

/// Whether the screen is scaled by the wish, and by nothing else but whole pixels.
bool isInPixelRatio(double wish, double devicePixelRatio)
{
    if (std::abs(devicePixelRatio - 1.0) < resolutionStep)
        return false;
    const double wholes = std::round(devicePixelRatio / wish);
    return wholes >= 1.0 && std::abs(devicePixelRatio - wholes * wish) < resolutionStep;
}

} // namespace

double remainingTextScale(double wish, const QString& platform, double devicePixelRatio)
{
    const bool fulfilled
        = platform == QLatin1String("xcb") && isInPixelRatio(wish, devicePixelRatio);
    return fulfilled ? 1.0 : wish;
}
