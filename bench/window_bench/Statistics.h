#pragma once

#include <cstddef>
#include <vector>

/// The usual figures of a set of samples, in the samples' own unit.
struct Summary {
    std::size_t count = 0;
    double lowest = 0.0;
    double lowerQuartile = 0.0;
    double median = 0.0;
    double upperQuartile = 0.0;
    double percentile99 = 0.0;
    double highest = 0.0;
};

/// The sample below which the given share of the samples lies, by linear interpolation between
/// the two nearest ones. The share is from 0 to 1; `sorted` is ascending and not empty.
[[nodiscard]] double percentile(const std::vector<double>& sorted, double share);

/// All figures are 0 where there are no samples.
[[nodiscard]] Summary summarise(std::vector<double> samples);
