#include "MeasureError.h"
#include "Options.h"
#include "ProgramRun.h"
#include "Report.h"
#include "XServer.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace {

std::vector<std::string> programsOf(const Options& options)
{
    if (options.yardstick.empty())
        return { options.program };
    return { options.program, options.yardstick };
}

std::string nameOf(const std::string& program) { return std::filesystem::path(program).filename(); }

// What else the machine is doing: figures taken while it is busy are not worth much.
void printLoad(const char* when)
{
    std::ifstream stream("/proc/loadavg");
    std::string oneMinute;
    stream >> oneMinute;
    std::printf("load average %s: %s\n", when, oneMinute.c_str());
}

void warmUp(XServer& server, const Options& options)
{
    for (std::size_t turn = 0; turn < options.warmUps; ++turn) {
        for (const std::string& program : programsOf(options)) {
            RunPlan plan;
            if (options.pictures)
                plan.picture = *options.pictures / (nameOf(program) + ".ppm");
            (void)runProgram(server, program, plan, options.log);
        }
    }
}

// The keys come in the last run, so that what they leave in the settings meets no other. They are
// typed into the program alone: a desk calculator that flashes a button at once and shows the digit
// a tenth of a second later gives no figure to compare with.
RunPlan planOf(std::size_t pair, std::size_t program, const Options& options)
{
    return {
        .memory = pair < options.memoryPairs,
        .rest = pair < options.restPairs,
        .keys = program == 0 && pair + 1 == options.pairs ? options.keys : 0,
        .picture = std::nullopt,
    };
}

std::vector<ProgramSamples> measure(const Options& options)
{
    XServer server;
    server.waitForWindowManager();
    server.parkPointer();
    warmUp(server, options);

    const auto programs = programsOf(options);
    std::vector<ProgramSamples> samples(programs.size());
    for (std::size_t pair = 0; pair < options.pairs; ++pair) {
        for (std::size_t turn = 0; turn < programs.size(); ++turn) {
            const RunPlan plan = planOf(pair, turn, options);
            samples[turn].name = nameOf(programs[turn]);
            samples[turn].add(runProgram(server, programs[turn], plan, options.log));
        }
    }
    return samples;
}

} // namespace

int main(int argc, char* argv[])
{
    const auto options = parseOptions(argc, argv);
    if (!options) {
        std::fputs(usage(), stderr);
        return EXIT_FAILURE;
    }
    try {
        printLoad("before");
        const auto samples = measure(*options);
        printLoad("after");
        printReport(samples);
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "window_bench: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
