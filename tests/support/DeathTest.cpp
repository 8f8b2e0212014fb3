#include "DeathTest.h"

#include <csignal>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

Death deathOf(const std::function<void()>& call)
{
    int ends[2] = {};
    if (pipe(ends) != 0)
        return {};
    const pid_t child = fork();
    if (child < 0) {
        close(ends[0]);
        close(ends[1]);
        return {};
    }
    if (child == 0) {
        dup2(ends[1], STDERR_FILENO);
        close(ends[0]);
        // An expected death leaves neither a core file nor a handler's report.
        prctl(PR_SET_DUMPABLE, 0);
        signal(SIGABRT, SIG_DFL);
        call();
        _exit(0);
    }
    close(ends[1]);

    Death death;
    char buffer[4096];
    for (ssize_t size = 0; (size = read(ends[0], buffer, sizeof buffer)) > 0;)
        death.message.append(buffer, size);
    close(ends[0]);
    int status = 0;
    const bool isKnown = waitpid(child, &status, 0) == child;
    death.aborted = isKnown && WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT;
    death.succeeded = isKnown && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return death;
}
