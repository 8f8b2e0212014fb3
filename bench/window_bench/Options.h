#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

/// What the command line asks for.
struct Options {
    std::size_t pairs = 21; ///< starts of each program, alternating
    std::size_t memoryPairs = 5; ///< of these, those in which the memory is read
    std::size_t restPairs = 3; ///< of these, those in which the rest is watched
    std::size_t keys = 500; ///< digits typed into the program in its last run
    std::size_t warmUps = 1; ///< pairs before the first, whose figures are dropped
    std::optional<std::filesystem::path> pictures; ///< folder for pictures of the first paints
    std::filesystem::path log = "/dev/null"; ///< takes what the programs print
    std::string program;
    std::string yardstick; ///< the program to compare with; empty for none
};

/// The options, or nothing where they cannot be understood.
[[nodiscard]] std::optional<Options> parseOptions(int argc, char* argv[]);

/// How to call the program, one option a line.
[[nodiscard]] const char* usage();
