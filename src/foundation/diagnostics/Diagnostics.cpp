#include "Diagnostics.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

// One write per line, so that lines of several threads do not mix.
void writeLine(std::FILE* stream, std::string_view text)
{
    std::string line(text);
    line += '\n';
    (void)std::fwrite(line.data(), 1, line.size(), stream);
    (void)std::fflush(stream);
}

} // namespace

void fatalError(std::string_view message)
{
    writeLine(stderr, message);
    std::abort();
}

void printDiagnostic(std::string_view line) { writeLine(stdout, line); }
