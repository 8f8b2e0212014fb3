#include "Report.h"

#include "Statistics.h"

#include <array>
#include <cstdio>

namespace {

struct Measure {
    const char* title;
    std::vector<double> ProgramSamples::*samples;
};

constexpr std::array measures {
    Measure { "start to first paint, ms", &ProgramSamples::startMilliseconds },
    Measure { "processor time until then, ms", &ProgramSamples::startCpuMilliseconds },
    Measure { "PSS 2 s after, MiB", &ProgramSamples::pssMebibytes },
    Measure { "processor time in 10 s of rest, s", &ProgramSamples::restCpuSeconds },
    Measure { "the same, exact, ms", &ProgramSamples::restCpuMilliseconds },
    Measure { "damage reports in this rest", &ProgramSamples::restDamageReports },
    Measure { "key to last damage, ms", &ProgramSamples::keyLastMilliseconds },
    Measure { "key to first damage, ms", &ProgramSamples::keyFirstMilliseconds },
};

void append(std::vector<double>& all, const std::vector<double>& more)
{
    all.insert(all.end(), more.begin(), more.end());
}

void printLine(const std::string& name, const Summary& figures)
{
    std::printf("  %-12s %9.2f %9.2f %9.2f %9.2f %9.2f %9.2f %6zu\n", name.c_str(), figures.median,
        figures.lowest, figures.lowerQuartile, figures.upperQuartile, figures.percentile99,
        figures.highest, figures.count);
}

void printMeasure(const Measure& measure, const std::vector<ProgramSamples>& programs)
{
    std::printf("%s\n", measure.title);
    std::vector<Summary> summaries;
    for (const ProgramSamples& program : programs) {
        if (const auto& samples = program.*measure.samples; !samples.empty()) {
            summaries.push_back(summarise(samples));
            printLine(program.name, summaries.back());
        }
    }
    if (summaries.size() == 2 && summaries[1].median > 0.0)
        std::printf("  %-12s %9.2f\n", "ratio", summaries[0].median / summaries[1].median);
}

} // namespace

void ProgramSamples::add(const RunFigures& figures)
{
    startMilliseconds.push_back(figures.startMilliseconds);
    startCpuMilliseconds.push_back(figures.startCpuMilliseconds);
    if (figures.pssMebibytes)
        pssMebibytes.push_back(*figures.pssMebibytes);
    if (figures.rest) {
        restCpuSeconds.push_back(figures.rest->cpuSeconds);
        restCpuMilliseconds.push_back(figures.rest->cpuMilliseconds);
        restDamageReports.push_back(static_cast<double>(figures.rest->damageReports));
    }
    if (figures.keys) {
        append(keyFirstMilliseconds, figures.keys->firstDamage);
        append(keyLastMilliseconds, figures.keys->lastDamage);
        keysMissed += figures.keys->missed;
    }
}

void printReport(const std::vector<ProgramSamples>& programs)
{
    std::printf("%-14s %9s %9s %9s %9s %9s %9s %6s\n", "", "median", "lowest", "quartile",
        "quartile", "99th", "highest", "n");
    for (const Measure& measure : measures) {
        if (!(programs.front().*measure.samples).empty())
            printMeasure(measure, programs);
    }
    for (const ProgramSamples& program : programs) {
        if (const std::size_t seen = program.keyLastMilliseconds.size(); seen > 0)
            std::printf("keys missed by %s: %zu of %zu\n", program.name.c_str(), program.keysMissed,
                program.keysMissed + seen);
    }
}
