#pragma once

#include "XServer.h"

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

/// A program under measurement, from its start to its end.
class Process {
public:
    /// Starts the program, found by PATH where it is a bare name; what it prints is appended to
    /// the log. Throws MeasureError where it cannot be started.
    Process(const std::string& program, const std::filesystem::path& log);

    /// The same with arguments: the program's name comes first.
    Process(const std::vector<std::string>& command, const std::filesystem::path& log);

    /// Ends the program and waits until it is gone: asked first, killed after five seconds.
    ~Process();

    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    [[nodiscard]] pid_t id() const { return m_id; }
    [[nodiscard]] const std::string& name() const { return m_name; }

    /// Just before the process was made.
    [[nodiscard]] Clock::time_point started() const { return m_started; }

    /// Readable once the process has ended.
    [[nodiscard]] int endDescriptor() const { return m_descriptor; }

    /// Processor time used up to now by all threads, in nanoseconds, as its own clock counts it.
    [[nodiscard]] std::int64_t cpuNanoseconds() const;

    /// The same for it and its descendants from /proc, user and system together, in seconds and to
    /// the tick of the system, 0.01 s.
    [[nodiscard]] double cpuSeconds() const;

    /// Proportional set size of it and its descendants, in KiB: memory that programs share, such as
    /// libraries, is divided among all that run, also those of other users.
    [[nodiscard]] std::int64_t pssKibibytes() const;

private:
    [[nodiscard]] std::vector<pid_t> family() const;

    std::string m_name;
    Clock::time_point m_started;
    pid_t m_id = 0;
    int m_descriptor = -1;
};
