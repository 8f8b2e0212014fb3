#pragma once

#include <QByteArray>

#include <functional>

/// What a call that should stop the process left behind.
struct Death {
    bool aborted = false; ///< ended by SIGABRT, as fatalError() does
    bool succeeded = false; ///< no death: the call returned, or ended the process with exit code 0
    QByteArray message; ///< what it wrote on standard error
};

/// Runs the call in a child process and waits for its end. A call that returns is no death.
/// The call must not need another thread: the child has only the calling one.
[[nodiscard]] Death deathOf(const std::function<void()>& call);
