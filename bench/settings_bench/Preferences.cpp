#include "Preferences.h"

#include "MeasureError.h"

#include <filesystem>
#include <fstream>
#include <thread>

namespace {

using namespace std::chrono_literals;

constexpr auto limit = 5s;
constexpr auto lookEvery = 1ms;

std::filesystem::path file()
{
    const char* const folder = std::getenv("XDG_CONFIG_HOME");
    if (!folder)
        throw MeasureError("XDG_CONFIG_HOME does not name a folder.");
    return std::filesystem::path(folder) / "Morrowick" / "Vexilo.ini";
}

} // namespace

void preferences::remove() { std::filesystem::remove(file()); }

bool preferences::say(const std::string& line)
{
    std::ifstream stream(file());
    for (std::string read; std::getline(stream, read);) {
        if (read == line)
            return true;
    }
    return false;
}

Clock::time_point preferences::waitUntilTheySay(const std::string& line)
{
    const auto deadline = Clock::now() + limit;
    while (!say(line)) {
        if (Clock::now() > deadline)
            throw MeasureError("The preferences never say " + line);
        std::this_thread::sleep_for(lookEvery);
    }
    return Clock::now();
}
