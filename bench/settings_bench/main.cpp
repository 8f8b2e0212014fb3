#include "CallTrace.h"
#include "MeasureError.h"
#include "Preferences.h"
#include "Process.h"
#include "SheetWatch.h"
#include "SliderDrag.h"
#include "Statistics.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>

namespace {

using namespace std::chrono_literals;

using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr double openingLimit = 100.0; // ms
constexpr double frameLimit = 16.0; // ms
constexpr int laterOpenings = 5;
constexpr auto restAfterStart = 2s;
constexpr char shortcut = ',';
constexpr const char* upperEnd = "serviceGood=100";
constexpr const char* lowerEnd = "serviceGood=1";

struct Arguments {
    std::string program;
    std::filesystem::path scratch; ///< an empty folder
    std::string mirrored; ///< a data folder with many bills, of which mirroring is on
    int starts = 7;
    int drags = 2;
    int steps = 500;
    std::string log = "/dev/null"; ///< takes what the program prints
    std::string picture; ///< where the open sheet is kept as a PPM file; empty for nowhere
};

/// Whether all that was measured stayed within its limit.
enum class Verdict { Within, Over };

Verdict printTimes(const char* title, const std::vector<double>& samples, double limit)
{
    const Summary figures = summarise(samples);
    const auto over = std::count_if(
        samples.begin(), samples.end(), [&](double sample) { return sample > limit; });
    std::printf("%-40s median %7.2f  99th %7.2f  highest %7.2f  n %zu  over %g: %td\n", title,
        figures.median, figures.percentile99, figures.highest, figures.count, limit, over);
    return over == 0 ? Verdict::Within : Verdict::Over;
}

Verdict worse(Verdict one, Verdict other) { return one == Verdict::Over ? Verdict::Over : other; }

void rest(WindowWatch& window)
{
    (void)window.countDamage(Clock::now() + restAfterStart);
    window.takeFocus();
}

Verdict measureOpenings(XServer& server, const Arguments& arguments)
{
    std::vector<double> first;
    std::vector<double> later;
    std::vector<double> atRest;
    for (int start = 0; start < arguments.starts; ++start) {
        WindowWatch window(server);
        const Process process(arguments.program, arguments.log);
        (void)window.waitForFirstPaint(process);
        rest(window);
        const Keyboard keyboard(server);
        for (int opening = 0; opening <= laterOpenings; ++opening) {
            const SheetTimes times = openSheet(server, window, keyboard, shortcut);
            (opening == 0 ? first : later).push_back(times.firstRows);
            atRest.push_back(times.atRest);
            if (start == 0 && opening == 0 && !arguments.picture.empty())
                savePicture(server, window.area(), arguments.picture);
            closeSheet(server, window, keyboard, times);
        }
    }
    const Verdict ofFirst
        = printTimes("first press of a start to the rows, ms", first, openingLimit);
    const Verdict ofLater = printTimes("later presses to the rows, ms", later, openingLimit);
    std::printf("%-40s median %7.2f\n", "press to the sheet at rest, ms", summarise(atRest).median);
    return worse(ofFirst, ofLater);
}

/// With mirroring on, opening the sheet switches a container of its own over that store.
Verdict measureMirroredOpenings(XServer& server, Arguments arguments)
{
    const char* const data = std::getenv("XDG_DATA_HOME");
    const std::string before = data == nullptr ? "" : data;
    ::setenv("XDG_DATA_HOME", arguments.mirrored.c_str(), 1);
    std::puts("with mirroring on, and many bills:");
    arguments.starts = std::min(arguments.starts, 3);
    arguments.picture.clear();
    const Verdict verdict = measureOpenings(server, arguments);
    ::setenv("XDG_DATA_HOME", before.c_str(), 1);
    return verdict;
}

Verdict measureDrags(XServer& server, const Arguments& arguments)
{
    DragTimes all;
    std::int64_t busy = 0;
    for (int drag = 0; drag < arguments.drags; ++drag) {
        preferences::remove();
        WindowWatch window(server);
        const Process process(arguments.program, arguments.log);
        (void)window.waitForFirstPaint(process);
        rest(window);
        (void)openSheet(server, window, Keyboard(server), shortcut);
        const Pointer pointer(server, window.area());
        const std::int64_t before = process.cpuNanoseconds();
        const DragTimes times = SliderDrag(server, window, pointer).dragToUpperEnd(arguments.steps);
        busy += process.cpuNanoseconds() - before;
        all.frames.insert(all.frames.end(), times.frames.begin(), times.frames.end());
        all.missed += times.missed;
    }
    if (all.frames.empty())
        throw MeasureError("The slider is not moved by a drag.");
    const Verdict verdict
        = printTimes("drag: motion to its last damage, ms", all.frames, frameLimit);
    // What a frame takes beyond this is waiting, for the next frame's turn or for other programs.
    std::printf("%-40s mean   %7.2f\n", "drag: processor time for a frame, ms",
        static_cast<double>(busy) / 1e6 / static_cast<double>(all.frames.size()));
    std::printf("%-40s %zu\n", "drag: motions without a frame", all.missed);
    return all.missed == 0 ? verdict : Verdict::Over;
}

std::string listOf(const std::map<std::string, std::size_t>& calls)
{
    std::string list;
    for (const auto& [name, count] : calls)
        list += (list.empty() ? "" : ", ") + name + ' ' + std::to_string(count);
    return list.empty() ? "none" : list;
}

void printWork(const char* title, const FileWork& work)
{
    std::printf("%s\n  main thread: %s; waits for another thread's: %zu\n  other threads: %s\n",
        title, listOf(work.mainThread).c_str(), work.waits, listOf(work.otherThreads).c_str());
}

/// When the traced program did what.
struct TracedTimes {
    TraceClock::time_point painted;
    TraceClock::time_point dragged;
    TraceClock::time_point stored;
    TraceClock::time_point asked; ///< to quit
    pid_t program = 0;
};

std::filesystem::path traceOf(const Arguments& arguments) { return arguments.scratch / "trace"; }

bool flushes(const std::map<std::string, std::size_t>& calls)
{
    return calls.count("fsync") + calls.count("fdatasync") > 0;
}

TracedTimes runTraced(XServer& server, const Arguments& arguments)
{
    // A first launch: it makes the store, and flushes it before the window is shown.
    preferences::remove();
    ::setenv("XDG_DATA_HOME", (arguments.scratch / "data").c_str(), 1);
    TracedTimes times;
    WindowWatch window(server);
    const Process process(CallTrace::command(arguments.program, traceOf(arguments)), arguments.log);
    times.program = process.id();
    (void)window.waitForFirstPaint(process);
    times.painted = TraceClock::now();
    rest(window);
    (void)openSheet(server, window, Keyboard(server), shortcut);
    const Pointer pointer(server, window.area());
    const SliderDrag slider(server, window, pointer);
    times.dragged = TraceClock::now();
    if (slider.dragToUpperEnd(arguments.steps).frames.empty())
        throw MeasureError("The slider is not moved by a drag.");
    const auto released = Clock::now();
    const auto stored = preferences::waitUntilTheySay(upperEnd);
    times.stored = TraceClock::now();
    std::printf("%-40s %.0f ms after the last frame\n", "the last percentage was on the disk",
        Milliseconds(stored - released).count());
    // The program is asked to end while a change still waits for the disk.
    slider.pressLowerEnd();
    times.asked = TraceClock::now();
    return times;
}

// A start makes the store on the main thread, and an end waits for what was not yet written: where
// neither is seen, the counts say nothing.
void requireThatCountsCount(const FileWork& start, const FileWork& drag, const FileWork& quit)
{
    if (!flushes(start.mainThread))
        throw MeasureError("The trace shows no flush by the main thread at the start.");
    if (!flushes(drag.otherThreads))
        throw MeasureError("The trace shows no flush of what the drag changed.");
    if (quit.waits == 0)
        throw MeasureError("The trace shows no wait for the last flush at the end.");
    if (!preferences::say(lowerEnd))
        throw MeasureError("What was changed before the end is not on the disk.");
}

Verdict countFlushes(XServer& server, const Arguments& arguments)
{
    const TracedTimes times = runTraced(server, arguments);
    const CallTrace trace(traceOf(arguments), times.program);
    const FileWork start = trace.between({}, times.painted);
    const FileWork drag = trace.between(times.dragged, times.stored);
    const FileWork quit = trace.between(times.asked, TraceClock::now());
    printWork("calls on files during a drag until it is stored (main thread: none allowed)", drag);
    printWork("the same during the start, to show that they are seen", start);
    printWork("the same during the end, with a change to be stored", quit);
    requireThatCountsCount(start, drag, quit);
    return drag.mainThread.empty() && drag.waits == 0 ? Verdict::Within : Verdict::Over;
}

bool readNumber(const std::string& text, int& number)
{
    const char* const end = text.data() + text.size();
    return text.empty()
        || (std::from_chars(text.data(), end, number) == std::from_chars_result { end, {} }
            && number > 0);
}

bool parse(int argc, char* argv[], Arguments& arguments)
{
    std::map<std::string, std::string> options;
    int next = 1;
    for (; next + 1 < argc && std::strncmp(argv[next], "--", 2) == 0; next += 2)
        options[argv[next]] = argv[next + 1];
    if (argc - next != 3)
        return false;
    arguments.program = argv[next];
    arguments.scratch = argv[next + 1];
    arguments.mirrored = argv[next + 2];
    arguments.picture = options["--picture"];
    if (options.count("--log") > 0)
        arguments.log = options["--log"];
    return readNumber(options["--starts"], arguments.starts)
        && readNumber(options["--drags"], arguments.drags)
        && readNumber(options["--steps"], arguments.steps);
}

} // namespace

int main(int argc, char* argv[])
{
    Arguments arguments;
    if (!parse(argc, argv, arguments)) {
        std::fputs("Usage: settings_bench [--starts N] [--drags N] [--steps N] [--picture FILE] "
                   "[--log FILE] PROGRAM SCRATCH MIRRORED\n",
            stderr);
        return EXIT_FAILURE;
    }
    try {
        XServer server;
        server.waitForWindowManager();
        server.parkPointer();
        Verdict verdict = measureOpenings(server, arguments);
        verdict = worse(verdict, measureMirroredOpenings(server, arguments));
        verdict = worse(verdict, measureDrags(server, arguments));
        verdict = worse(verdict, countFlushes(server, arguments));
        std::puts(verdict == Verdict::Within ? "within all limits" : "OVER A LIMIT");
        return verdict == Verdict::Within ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "settings_bench: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
