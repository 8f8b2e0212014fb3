#include "CallTrace.h"

#include "MeasureError.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <limits>
#include <sstream>
#include <string_view>
#include <thread>

namespace {

using namespace std::chrono_literals;

constexpr auto tracerLimit = 10s;
constexpr auto lookEvery = 10ms;

// The older ones are not known on every kind of machine, which the question mark allows for.
constexpr std::array<std::string_view, 4> openings { "open", "openat", "openat2", "creat" };
constexpr std::array<std::string_view, 5> writes { "write", "writev", "pwrite64", "pwritev",
    "pwritev2" };
constexpr std::array<std::string_view, 19> changes { "fsync", "fdatasync", "sync_file_range",
    "sync", "syncfs", "msync", "rename", "renameat", "renameat2", "unlink", "unlinkat", "link",
    "linkat", "mkdir", "mkdirat", "truncate", "ftruncate", "fallocate", "copy_file_range" };

template <std::size_t size>
bool contains(const std::array<std::string_view, size>& names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

template <std::size_t size>
void append(std::string& filter, const std::array<std::string_view, size>& names)
{
    for (const std::string_view name : names)
        filter.append(",?").append(name);
}

bool has(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

bool isOnDisk(std::string_view path)
{
    constexpr std::array<std::string_view, 4> elsewhere { "/dev/", "/proc/", "/sys/", "/memfd:" };
    return path.starts_with('/')
        && std::none_of(elsewhere.begin(), elsewhere.end(),
            [&](std::string_view folder) { return path.starts_with(folder); });
}

// What follows the first opening mark of the text, as in  write(5</a/file>, ...
std::string_view after(std::string_view text, char mark)
{
    const auto place = text.find(mark);
    return place == std::string_view::npos ? std::string_view() : text.substr(place + 1);
}

// The last part of a finished call's text, as in  fsync(5</a/file>) = 0 <0.001234>
double secondsTaken(const std::string& text) { return std::stod(text.substr(text.rfind('<') + 1)); }

double secondsOf(TraceClock::time_point time)
{
    return std::chrono::duration<double>(time.time_since_epoch()).count();
}

std::string waitForEndOf(const std::filesystem::path& file, pid_t program)
{
    const std::string id = std::to_string(program) + ' ';
    const auto deadline = TraceClock::now() + tracerLimit;
    while (TraceClock::now() < deadline) {
        std::ifstream stream(file);
        std::ostringstream read;
        read << stream.rdbuf();
        std::string text = read.str();
        const auto last = text.empty() ? 0 : text.rfind('\n', text.size() - 2) + 1;
        if (text.compare(last, id.size(), id) == 0 && text.find("+++", last) != std::string::npos)
            return text;
        std::this_thread::sleep_for(lookEvery);
    }
    throw MeasureError("The program's end was not traced.");
}

} // namespace

std::vector<std::string> CallTrace::command(
    const std::string& program, const std::filesystem::path& file)
{
    std::string filter = "--trace=futex";
    append(filter, openings);
    append(filter, writes);
    append(filter, changes);
    return { "strace", "--daemonize=grandchild", "--follow-forks", "--seccomp-bpf",
        "--absolute-timestamps=format:unix,precision:us", "--syscall-times", "--decode-fds=path",
        "--string-limit=0", "--signal=none", filter, "--output=" + file.string(), program };
}

CallTrace::CallTrace(const std::filesystem::path& file, pid_t program)
    : m_program(program)
{
    std::istringstream lines(waitForEndOf(file, program));
    pid_t thread = 0;
    double time = 0.0;
    std::string text;
    while (lines >> thread >> time >> std::ws && std::getline(lines, text))
        take(thread, time, text);
    if (!lines.eof())
        throw MeasureError("The trace holds a line that is none.");
}

CallTrace::Kind CallTrace::kindOf(const std::string& name, const std::string& text)
{
    if (name == "futex" && has(text, "FUTEX_WAIT"))
        return Kind::Wait;
    if (name == "futex")
        return has(text, "FUTEX_WAKE") ? Kind::Wake : Kind::None;
    if (contains(openings, name)) {
        const bool forWriting
            = has(text, "O_WRONLY") || has(text, "O_RDWR") || has(text, "O_CREAT");
        return (forWriting || name == "creat") && isOnDisk(after(text, '"')) ? Kind::File
                                                                             : Kind::None;
    }
    if (contains(writes, name))
        return isOnDisk(after(text, '<')) ? Kind::File : Kind::None;
    return contains(changes, name) ? Kind::File : Kind::None;
}

void CallTrace::take(pid_t thread, double time, const std::string& text)
{
    if (text.starts_with("+++") || text.starts_with("---"))
        return;
    if (text.starts_with("<...")) {
        if (const auto begun = m_unfinished.find(thread); begun != m_unfinished.end())
            finish(m_calls[begun->second], text);
        return;
    }
    Call call { .thread = thread,
        .name = text.substr(0, text.find('(')),
        .begin = time,
        .end = std::numeric_limits<double>::infinity() };
    call.kind = kindOf(call.name, text);
    if (call.kind == Kind::Wait || call.kind == Kind::Wake)
        call.lock = after(text, '(').substr(0, after(text, '(').find(','));
    if (has(text, "<unfinished ...>"))
        m_unfinished[thread] = m_calls.size();
    else
        finish(call, text);
    m_calls.push_back(call);
}

void CallTrace::finish(Call& call, const std::string& text)
{
    call.end = call.begin + secondsTaken(text);
    if (call.kind == Kind::Wait && has(text, "EAGAIN"))
        call.kind = Kind::None; // there was nothing left to wait for
}

bool CallTrace::isForFileWork(const Call& wait) const
{
    const auto worksMeanwhile = [&](const Call& call, pid_t thread) {
        return call.kind == Kind::File && call.thread == thread && call.begin < wait.end
            && call.end > wait.begin;
    };
    const auto ends = [&](const Call& call) {
        return call.kind == Kind::Wake && call.lock == wait.lock && call.thread != wait.thread
            && call.begin > wait.begin && call.begin < wait.end;
    };
    return std::any_of(m_calls.begin(), m_calls.end(), [&](const Call& wake) {
        return ends(wake) && std::any_of(m_calls.begin(), m_calls.end(), [&](const Call& call) {
            return worksMeanwhile(call, wake.thread);
        });
    });
}

FileWork CallTrace::between(TraceClock::time_point begin, TraceClock::time_point end) const
{
    FileWork work;
    for (const Call& call : m_calls) {
        if (call.begin < secondsOf(begin) || call.begin > secondsOf(end))
            continue;
        if (call.kind == Kind::File)
            ++(call.thread == m_program ? work.mainThread : work.otherThreads)[call.name];
        else if (call.kind == Kind::Wait && call.thread == m_program && isForFileWork(call))
            ++work.waits;
    }
    return work;
}
