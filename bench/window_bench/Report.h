#pragma once

#include "ProgramRun.h"

#include <string>
#include <vector>

/// All that was measured of one program.
struct ProgramSamples {
    std::string name;
    std::vector<double> startMilliseconds;
    std::vector<double> startCpuMilliseconds;
    std::vector<double> pssMebibytes;
    std::vector<double> restCpuSeconds;
    std::vector<double> restCpuMilliseconds;
    std::vector<double> restDamageReports;
    std::vector<double> keyFirstMilliseconds;
    std::vector<double> keyLastMilliseconds;
    std::size_t keysMissed = 0;

    void add(const RunFigures& figures);
};

/// Prints the table to the standard output: a block for each measure, in it a line for each
/// program, and the first program's median as a share of the second's where there are two.
void printReport(const std::vector<ProgramSamples>& programs);
