#include "ProgramRun.h"

#include "MeasureError.h"
#include "Process.h"
#include "WindowPixels.h"
#include "WindowWatch.h"

namespace {

using namespace std::chrono_literals;

constexpr auto memoryAfter = 2s;
constexpr auto restAfter = 3s;
constexpr auto restFor = 10s;

using Milliseconds = std::chrono::duration<double, std::milli>;

double cpuMilliseconds(const Process& process)
{
    return static_cast<double>(process.cpuNanoseconds()) / 1e6;
}

RestFigures measureRest(const Process& process, WindowWatch& window, Clock::time_point begin)
{
    const double seconds = process.cpuSeconds();
    const double milliseconds = cpuMilliseconds(process);
    const std::size_t reports = window.countDamage(begin + restFor);
    if (!window.hasFocus())
        throw MeasureError(process.name() + " lost the focus while it rested.");
    return {
        .cpuSeconds = process.cpuSeconds() - seconds,
        .cpuMilliseconds = cpuMilliseconds(process) - milliseconds,
        .damageReports = reports,
    };
}

} // namespace

RunFigures runProgram(XServer& server, const std::string& program, const RunPlan& plan,
    const std::filesystem::path& log)
{
    WindowWatch window(server);
    const Process process(program, log);
    const auto painted = window.waitForFirstPaint(process);
    RunFigures figures;
    figures.startMilliseconds = Milliseconds(painted - process.started()).count();
    figures.startCpuMilliseconds = cpuMilliseconds(process);
    if (plan.picture)
        savePicture(server, window.area(), *plan.picture);

    if (plan.rest || plan.keys > 0)
        window.takeFocus();
    if (plan.memory) {
        (void)window.countDamage(painted + memoryAfter);
        figures.pssMebibytes = static_cast<double>(process.pssKibibytes()) / 1024.0;
    }
    if (plan.rest || plan.keys > 0)
        (void)window.countDamage(painted + restAfter);
    if (plan.rest)
        figures.rest = measureRest(process, window, painted + restAfter);
    if (plan.keys > 0)
        figures.keys = typeDigits(window, Keyboard(server), plan.keys);
    return figures;
}
