#include "Process.h"

#include "MeasureError.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace {

constexpr int secondsToEnd = 5;

std::filesystem::path folderOf(pid_t id) { return "/proc/" + std::to_string(id); }

pid_t spawn(std::vector<std::string> command, const std::filesystem::path& log)
{
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(
        &files, STDOUT_FILENO, log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    posix_spawn_file_actions_adddup2(&files, STDOUT_FILENO, STDERR_FILENO);
    std::vector<char*> arguments(command.size() + 1); // the last one stays null
    std::transform(command.begin(), command.end(), arguments.begin(),
        [](std::string& argument) { return argument.data(); });
    pid_t id = 0;
    const int failed
        = posix_spawnp(&id, arguments.front(), &files, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&files);
    if (failed)
        throw MeasureError("Cannot start " + command.front());
    return id;
}

// By its number: the header of glibc 2.36 declares the function for C only.
int openDescriptor(pid_t id) { return static_cast<int>(::syscall(SYS_pidfd_open, id, 0)); }

// A process's children, as each of its threads lists them.
std::vector<pid_t> childrenOf(pid_t id)
{
    std::vector<pid_t> children;
    std::error_code gone;
    for (const auto& thread : std::filesystem::directory_iterator(folderOf(id) / "task", gone)) {
        std::ifstream list(thread.path() / "children");
        for (pid_t child = 0; list >> child;)
            children.push_back(child);
    }
    return children;
}

// User and system time, fields 14 and 15 of the line; the name before them may hold blanks.
std::int64_t ticksOf(pid_t id)
{
    std::ifstream stream(folderOf(id) / "stat");
    std::string line;
    std::getline(stream, line);
    std::istringstream rest(line.substr(line.rfind(')') + 1));
    std::string skipped;
    for (int field = 3; field < 14; ++field)
        rest >> skipped;
    std::int64_t user = 0;
    std::int64_t system = 0;
    if (!(rest >> user >> system))
        throw MeasureError("Cannot read the processor time of process " + std::to_string(id));
    return user + system;
}

std::int64_t pssOf(pid_t id)
{
    std::ifstream stream(folderOf(id) / "smaps_rollup");
    for (std::string word; stream >> word;) {
        std::int64_t size = 0;
        if (word == "Pss:" && stream >> size)
            return size;
    }
    throw MeasureError("Cannot read the memory of process " + std::to_string(id));
}

} // namespace

Process::Process(const std::string& program, const std::filesystem::path& log)
    : Process(std::vector { program }, log)
{
}

Process::Process(const std::vector<std::string>& command, const std::filesystem::path& log)
    : m_name(std::filesystem::path(command.front()).filename())
    , m_started(Clock::now())
    , m_id(spawn(command, log))
    , m_descriptor(openDescriptor(m_id))
{
}

Process::~Process()
{
    ::kill(m_id, SIGTERM);
    pollfd ended { .fd = m_descriptor, .events = POLLIN, .revents = 0 };
    if (::poll(&ended, 1, secondsToEnd * 1000) != 1)
        ::kill(m_id, SIGKILL);
    ::waitpid(m_id, nullptr, 0);
    ::close(m_descriptor);
}

std::int64_t Process::cpuNanoseconds() const
{
    clockid_t clock = 0;
    timespec used {};
    if (::clock_getcpuclockid(m_id, &clock) != 0 || ::clock_gettime(clock, &used) != 0)
        throw MeasureError("Cannot read the processor time of " + m_name);
    return std::int64_t { used.tv_sec } * 1'000'000'000 + used.tv_nsec;
}

double Process::cpuSeconds() const
{
    std::int64_t ticks = 0;
    for (const pid_t id : family())
        ticks += ticksOf(id);
    return static_cast<double>(ticks) / static_cast<double>(::sysconf(_SC_CLK_TCK));
}

std::int64_t Process::pssKibibytes() const
{
    std::int64_t size = 0;
    for (const pid_t id : family())
        size += pssOf(id);
    return size;
}

std::vector<pid_t> Process::family() const
{
    std::vector<pid_t> members { m_id };
    for (std::size_t next = 0; next < members.size(); ++next) {
        const auto children = childrenOf(members[next]);
        members.insert(members.end(), children.begin(), children.end());
    }
    return members;
}
