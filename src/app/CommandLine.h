#pragma once

#include <optional>

/// Prints what `--help` or `--version` ask for; then the exit code, and nothing where neither was
/// asked for. Every other argument is left to Qt. It makes a core application of its own while it
/// prints, so none may exist.
[[nodiscard]] std::optional<int> answerCommandLine(int argc, char* argv[]);
