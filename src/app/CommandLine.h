#pragma once

/// Prints what `--help` or `--version` ask for, and tells whether that was all there was to do.
/// Every other argument is left to Qt. It makes a core application of its own while it prints, so
/// none may exist.
[[nodiscard]] bool answerCommandLine(int argc, char* argv[]);
