#include "CommandLine.h"

#include "Bundle.h"
#include "Version.h"

#include <QCoreApplication>
#include <QString>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
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

int printed(const std::string& text)
{
    const bool isWritten = std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
    return isWritten ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

std::optional<int> answerCommandLine(int argc, char* argv[])
{
    if (argc < 2)
        return std::nullopt;
    const std::span<char*> arguments(argv + 1, argv + argc);
    if (isGiven(arguments, "-h"sv, "--help"sv))
        return printed(help);
    if (isGiven(arguments, "-v"sv, "--version"sv)) {
        // It finds the bundle beside the program.
        const QCoreApplication application(argc, argv);
        return printed("Vexilo " + version(Bundle::main()).toStdString() + '\n');
    }
    return std::nullopt;
}
