#include "TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {

int wakeUp = -1; // an eventfd: the one thing that a signal handler may touch

void onSignal(int)
{
    const int error = errno; // of whatever the signal interrupted
    const eventfd_t one = 1;
    (void)!write(wakeUp, &one, sizeof one);
    errno = error;
}

} // namespace

TerminationSignals::TerminationSignals()
{
    wakeUp = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (wakeUp < 0)
        return;
    auto* const notifier = new QSocketNotifier(wakeUp, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [] { QCoreApplication::quit(); });

    // Handlers, not a blocked mask: programs that this one starts would inherit the mask.
    struct sigaction action { };
    action.sa_handler = onSignal;
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    for (const int signal : { SIGTERM, SIGINT, SIGHUP })
        sigaction(signal, &action, nullptr);
}

TerminationSignals::~TerminationSignals()
{
    for (const int signal : { SIGTERM, SIGINT, SIGHUP })
        std::signal(signal, SIG_DFL);
    qDeleteAll(findChildren<QSocketNotifier*>());
    if (wakeUp >= 0)
        close(wakeUp);
    wakeUp = -1;
}
