#pragma once

#include "KeyLatency.h"
#include "XServer.h"

#include <filesystem>
#include <optional>
#include <string>

/// What one run measures beside the start.
struct RunPlan {
    bool memory = false;
    bool rest = false;
    std::size_t keys = 0; ///< digits to type
    std::optional<std::filesystem::path> picture; ///< where the first paint is kept, as a PPM file
};

/// The processor's work during ten seconds in which the program has the focus and nothing to do.
struct RestFigures {
    double cpuSeconds = 0.0; ///< all threads and children, to the system's tick of 0.01 s
    double cpuMilliseconds = 0.0; ///< the same without children, exact
    std::size_t damageReports = 0; ///< what it painted all the same
};

struct RunFigures {
    double startMilliseconds
        = 0.0; ///< from before the process was made to its first painted window
    double startCpuMilliseconds = 0.0; ///< processor time that it had used by then
    std::optional<double> pssMebibytes; ///< two seconds after the first paint
    std::optional<RestFigures> rest; ///< from three to thirteen seconds after the first paint
    std::optional<KeyTimes> keys;
};

/// Starts the program, a path or a name found by PATH, measures what the plan says and ends it.
/// Throws MeasureError where a figure cannot be had.
[[nodiscard]] RunFigures runProgram(XServer& server, const std::string& program,
    const RunPlan& plan, const std::filesystem::path& log);
