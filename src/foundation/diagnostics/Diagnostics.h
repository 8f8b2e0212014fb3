#pragma once

#include <string_view>

// The two ways in which the program speaks to a terminal.

/// Prints the message on standard error and ends the process abnormally (SIGABRT).
/// For broken contracts only: whatever a user can cause is reported in the window instead.
[[noreturn]] void fatalError(std::string_view message);

/// Prints one line on standard output, at once.
void printDiagnostic(std::string_view line);
