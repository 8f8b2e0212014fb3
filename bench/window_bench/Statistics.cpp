#include "Statistics.h"

#include <algorithm>
#include <cmath>

double percentile(const std::vector<double>& sorted, double share)
{
    const double position = share * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<std::size_t>(std::floor(position));
    const std::size_t above = std::min(below + 1, sorted.size() - 1);
    return std::lerp(sorted[below], sorted[above], position - std::floor(position));
}

Summary summarise(std::vector<double> samples)
{
    if (samples.empty())
        return {};
    std::sort(samples.begin(), samples.end());
    return {
        .count = samples.size(),
        .lowest = samples.front(),
        .lowerQuartile = percentile(samples, 0.25),
        .median = percentile(samples, 0.5),
        .upperQuartile = percentile(samples, 0.75),
        .percentile99 = percentile(samples, 0.99),
        .highest = samples.back(),
    };
}
