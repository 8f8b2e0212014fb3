#include "MeasureError.h"
#include "Process.h"
#include "Scrolling.h"
#include "SheetWatch.h"
#include "Statistics.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>

namespace {

using namespace std::chrono_literals;

using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int openings = 15;
constexpr int deletions = 20;
constexpr int notches = 200;
constexpr xcb_keysym_t keyHome = 0xff50;
constexpr xcb_keysym_t keyDelete = 0xffff;
constexpr xcb_keysym_t keyDown = 0xff54;

struct Arguments {
    std::string program;
    std::string few; ///< data folder with some bills
    std::string many; ///< data folder with very many
    std::size_t pairs = 21;
    std::string log = "/dev/null"; ///< takes what the program prints
    std::string picture; ///< where the list's end is kept as a PPM file; empty for nowhere
};

void printSummary(const char* title, const std::vector<double>& samples)
{
    const Summary figures = summarise(samples);
    std::printf("%-44s median %7.2f  99th %7.2f  highest %7.2f  n %zu\n", title, figures.median,
        figures.percentile99, figures.highest, figures.count);
}

Process start(const Arguments& arguments, const std::string& data)
{
    ::setenv("XDG_DATA_HOME", data.c_str(), 1);
    return { arguments.program, arguments.log };
}

double startTime(XServer& server, const Arguments& arguments, const std::string& data)
{
    WindowWatch window(server);
    const Process process = start(arguments, data);
    return Milliseconds(window.waitForFirstPaint(process) - process.started()).count();
}

void measureStarts(XServer& server, const Arguments& arguments)
{
    std::vector<double> few;
    std::vector<double> many;
    for (std::size_t pair = 0; pair <= arguments.pairs; ++pair) {
        const double one = startTime(server, arguments, arguments.few);
        const double other = startTime(server, arguments, arguments.many);
        if (pair == 0)
            continue; // warms the caches
        few.push_back(one);
        many.push_back(other);
    }
    printSummary("start to first paint, few bills, ms", few);
    printSummary("start to first paint, many bills, ms", many);
    std::printf(
        "%-44s %.3f\n", "ratio of the medians", summarise(many).median / summarise(few).median);
}

double mebibytes(const Process& process)
{
    return static_cast<double>(process.pssKibibytes()) / 1024.0;
}

void measureSheet(XServer& server, const Arguments& arguments, const std::string& data)
{
    WindowWatch window(server);
    const Process process = start(arguments, data);
    (void)window.waitForFirstPaint(process);
    (void)window.countDamage(Clock::now() + 2s);
    window.takeFocus();
    const double before = mebibytes(process);
    const Keyboard keyboard(server);
    const Pointer pointer(server, window.area());

    std::vector<double> firstRows;
    std::vector<double> atRest;
    SheetTimes first;
    for (int opening = 0; opening < openings; ++opening) {
        const SheetTimes times = openSheet(server, window, keyboard, 'h');
        if (opening == 0)
            first = times;
        firstRows.push_back(times.firstRows);
        atRest.push_back(times.atRest);
        if (opening + 1 < openings)
            closeSheet(server, window, keyboard, times);
    }
    std::printf("%-44s %.2f\n", "first press to first rows, ms", first.firstRows);
    printSummary("press to first rows, ms", firstRows);
    printSummary("press to the sheet at rest, ms", atRest);
    const double opened = mebibytes(process);
    printSummary("wheel: between frames, ms", wheel(window, pointer, notches));
    (void)window.countDamage(Clock::now() + 1s);
    (void)keyToFirstDamage(window, keyboard, keyHome);
    printSummary("scroll bar: between frames, ms", dragScrollBar(window, pointer));
    (void)window.countDamage(Clock::now() + 1s);
    if (!arguments.picture.empty())
        savePicture(server, window.area(), arguments.picture);
    std::printf("%-44s %.2f, opened %.2f, scrolled %.2f, grown by %.2f\n", "PSS, MiB", before,
        opened, mebibytes(process), mebibytes(process) - before);

    (void)keyToFirstDamage(window, keyboard, keyHome);
    std::vector<double> updates;
    for (int deletion = 0; deletion < deletions; ++deletion) {
        (void)keyToFirstDamage(window, keyboard, keyDown);
        updates.push_back(keyToFirstDamage(window, keyboard, keyDelete));
    }
    printSummary("Delete to the list's first damage, ms", updates);
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
    arguments.few = argv[next + 1];
    arguments.many = argv[next + 2];
    arguments.picture = options["--picture"];
    if (options.count("--log") > 0)
        arguments.log = options["--log"];
    const std::string& pairs = options["--pairs"];
    return pairs.empty()
        || std::from_chars(pairs.data(), pairs.data() + pairs.size(), arguments.pairs).ec
        == std::errc();
}

} // namespace

int main(int argc, char* argv[])
{
    Arguments arguments;
    if (!parse(argc, argv, arguments)) {
        std::fputs("Usage: saved_bills_bench [--pairs N] [--picture FILE] [--log FILE] "
                   "PROGRAM FEW MANY\n",
            stderr);
        return EXIT_FAILURE;
    }
    try {
        XServer server;
        server.waitForWindowManager();
        server.parkPointer();
        measureStarts(server, arguments);
        std::puts("\nmany bills");
        measureSheet(server, arguments, arguments.many);
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "saved_bills_bench: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
