#include "Options.h"

#include <getopt.h>

#include <array>
#include <charconv>
#include <string_view>

namespace {

constexpr std::array longOptions {
    option { "pairs", required_argument, nullptr, 'p' },
    option { "memory-pairs", required_argument, nullptr, 'm' },
    option { "rest-pairs", required_argument, nullptr, 'r' },
    option { "keys", required_argument, nullptr, 'k' },
    option { "warm-ups", required_argument, nullptr, 'w' },
    option { "pictures", required_argument, nullptr, 'i' },
    option { "log", required_argument, nullptr, 'l' },
    option {},
};

bool readCount(std::string_view text, std::size_t& count)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    return error == std::errc() && end == text.data() + text.size();
}

bool takeOption(int letter, const char* value, Options& options)
{
    switch (letter) {
    case 'p':
        return readCount(value, options.pairs);
    case 'm':
        return readCount(value, options.memoryPairs);
    case 'r':
        return readCount(value, options.restPairs);
    case 'k':
        return readCount(value, options.keys);
    case 'w':
        return readCount(value, options.warmUps);
    case 'i':
        options.pictures = value;
        return true;
    case 'l':
        options.log = value;
        return true;
    default:
        return false;
    }
}

} // namespace

std::optional<Options> parseOptions(int argc, char* argv[])
{
    Options options;
    for (;;) {
        const int letter = ::getopt_long(argc, argv, "", longOptions.data(), nullptr);
        if (letter == -1)
            break;
        if (!takeOption(letter, optarg, options))
            return std::nullopt;
    }
    const int programs = argc - optind;
    if (programs < 1 || programs > 2 || options.pairs == 0)
        return std::nullopt;
    options.program = argv[optind];
    options.yardstick = programs == 2 ? argv[optind + 1] : "";
    return options;
}

const char* usage()
{
    return "Usage: window_bench [OPTION]... PROGRAM [YARDSTICK]\n"
           "  --pairs N         starts of each program (21)\n"
           "  --memory-pairs N  of these, with the memory read (5)\n"
           "  --rest-pairs N    of these, with ten seconds of rest (3)\n"
           "  --keys N          digits typed into PROGRAM in its last run (500)\n"
           "  --warm-ups N      pairs before the first, not counted (1)\n"
           "  --pictures DIR    keep a picture of each program's first paint, needs a warm-up\n"
           "  --log FILE        takes what the programs print (/dev/null)\n";
}
