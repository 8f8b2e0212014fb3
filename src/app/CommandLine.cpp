#include "CommandLine.h"

#include "Bundle.h"
#include "Version.h"

#include <QCoreApplication>
#include <QString>

#include <algorithm>
#include <cstdio>
#include <span>
#include <string_view>

using namespace std::string_view_literals;

namespace {

constexpr auto help = "Usage: vexilo [Qt option ...]\n"
                      "Opens a window that splits a restaurant bill.\n"
                      "\n"
                      "  -h, --help     Tell this and end\n"
                      "  -v, --version  Print the version and end\n";

bool isGiven(std::span<char*> arguments, std::string_view brief, std::string_view full)
{
    return std::ranges::any_of(arguments,
        [&](std::string_view argument) { return argument == brief || argument == full; });
}

} // namespace

bool answerCommandLine(int argc, char* argv[])
{
    const std::span<char*> arguments(argv + 1, argv + argc);
    if (isGiven(arguments, "-h"sv, "--help"sv)) {
        std::fputs(help, stdout);
        return true;
    }
    if (isGiven(arguments, "-v"sv, "--version"sv)) {
        // It finds the bundle beside the program.
        const QCoreApplication application(argc, argv);
        std::printf("Vexilo %s\n", qUtf8Printable(version(Bundle::main())));
        return true;
    }
    return false;
}
