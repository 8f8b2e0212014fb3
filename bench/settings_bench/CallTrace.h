#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

/// The clock that traced calls are stamped with.
using TraceClock = std::chrono::system_clock;

/// What a program's threads did to files in some time.
struct FileWork {
    std::map<std::string, std::size_t> mainThread; ///< calls by their names
    std::map<std::string, std::size_t> otherThreads;
    std::size_t waits = 0; ///< how often the main thread waited for one that did such a call
};

/// The system calls of a program that change a file or carry it to the disk, and the main thread's
/// waits for them, as strace saw them. Counted are opening for writing, writing, flushing, renaming
/// and removing; not devices, sockets and shared memory. A thread that hands such a call to another
/// one and waits for it is as blocked as if it had made it itself: it sleeps on a lock until a
/// thread wakes it that made such a call meanwhile. Tracing slows the program: what is traced
/// cannot be timed.
class CallTrace {
public:
    /// The command that runs the program with its calls written to the file. The process that is
    /// started becomes the program itself: it has its id, gets its signals and leaves its status.
    [[nodiscard]] static std::vector<std::string> command(
        const std::string& program, const std::filesystem::path& file);

    /// Reads what was traced of a program that has ended, for whose tracer it waits. Throws
    /// MeasureError where the end of the trace is not seen.
    CallTrace(const std::filesystem::path& file, pid_t program);

    /// The calls that began in this time.
    [[nodiscard]] FileWork between(TraceClock::time_point begin, TraceClock::time_point end) const;

private:
    enum class Kind { None, File, Wait, Wake };

    struct Call {
        pid_t thread = 0;
        std::string name;
        Kind kind = Kind::None;
        std::string lock = {}; ///< the address that is slept on or woken
        double begin = 0.0; ///< seconds of TraceClock
        double end = 0.0;
    };

    [[nodiscard]] static Kind kindOf(const std::string& name, const std::string& text);
    [[nodiscard]] bool isForFileWork(const Call& wait) const;
    void take(pid_t thread, double time, const std::string& text);
    void finish(Call& call, const std::string& text);

    pid_t m_program = 0;
    std::vector<Call> m_calls;
    std::map<pid_t, std::size_t> m_unfinished; ///< places in m_calls
};
