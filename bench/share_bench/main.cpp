#include "MeasureError.h"
#include "Process.h"
#include "SheetWatch.h"
#include "Statistics.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace {

using namespace std::chrono_literals;

constexpr double openingLimit = 100.0; // ms
constexpr int laterOpenings = 5;
constexpr auto restAfterStart = 2s;

constexpr xcb_keysym_t keyTab = 0xff09;
constexpr xcb_keysym_t keyShift = 0xffe1;
constexpr xcb_keysym_t keyReturn = 0xff0d;

struct Arguments {
    std::string program;
    int starts = 7;
    std::string log = "/dev/null"; ///< takes what the program prints
    std::string picture; ///< where the open sheet is kept as a PPM file; empty for nowhere
};

/// Whether all that was measured stayed within its limit.
enum class Verdict { Within, Over };

Verdict printTimes(const char* title, const std::vector<double>& samples)
{
    const Summary figures = summarise(samples);
    std::printf("%-40s median %7.2f  99th %7.2f  highest %7.2f  n %zu\n", title, figures.median,
        figures.percentile99, figures.highest, figures.count);
    return figures.highest <= openingLimit ? Verdict::Within : Verdict::Over;
}

void rest(WindowWatch& window, std::chrono::milliseconds time)
{
    (void)window.countDamage(Clock::now() + time);
}

/// From the bill field, which has the keyboard at the start, back over Save and History to Share.
void goToShareButton(WindowWatch& window, const Keyboard& keyboard)
{
    for (int button = 0; button < 3; ++button) {
        keyboard.press({ keyShift, keyTab });
        rest(window, 200ms);
    }
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
        rest(window, restAfterStart);
        window.takeFocus();
        const Keyboard keyboard(server);
        goToShareButton(window, keyboard);
        for (int opening = 0; opening <= laterOpenings; ++opening) {
            const SheetTimes times = openSheetByKeys(server, window, keyboard, { keyReturn });
            (opening == 0 ? first : later).push_back(times.firstRows);
            atRest.push_back(times.atRest);
            if (start == 0 && opening == 0 && !arguments.picture.empty())
                savePicture(server, window.area(), arguments.picture);
            closeSheet(server, window, keyboard, times);
        }
    }
    const Verdict ofFirst = printTimes("first press of a start to the rows, ms", first);
    const Verdict ofLater = printTimes("later presses to the rows, ms", later);
    std::printf("%-40s median %7.2f\n", "press to the sheet at rest, ms", summarise(atRest).median);
    return ofFirst == Verdict::Over ? ofFirst : ofLater;
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
    if (argc - next != 1)
        return false;
    arguments.program = argv[next];
    arguments.picture = options["--picture"];
    if (options.count("--log") > 0)
        arguments.log = options["--log"];
    return readNumber(options["--starts"], arguments.starts);
}

} // namespace

int main(int argc, char* argv[])
{
    Arguments arguments;
    if (!parse(argc, argv, arguments)) {
        std::fputs(
            "Usage: share_bench [--starts N] [--picture FILE] [--log FILE] PROGRAM\n", stderr);
        return EXIT_FAILURE;
    }
    try {
        XServer server;
        server.waitForWindowManager();
        server.parkPointer();
        const Verdict verdict = measureOpenings(server, arguments);
        std::printf("%s %g ms\n", verdict == Verdict::Within ? "within" : "OVER", openingLimit);
        return verdict == Verdict::Within ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "share_bench: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
