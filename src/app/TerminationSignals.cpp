#include "TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {

constexpr std::array handledSignals { SIGTERM, SIGINT, SIGHUP };
std::array<struct sigaction, handledSignals.size()> previousActions {};

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
    for (std::size_t i = 0; i < handledSignals.size(); ++i) {
        sigaction(handledSignals[i], nullptr, &previousActions[i]);
        // Who started the program to ignore a signal ("nohup") is obeyed.
        if (previousActions[i].sa_handler != SIG_IGN)
            sigaction(handledSignals[i], &action, nullptr);
    }
}

TerminationSignals::~TerminationSignals()
{
    if (wakeUp < 0)
        return;
    for (std::size_t i = 0; i < handledSignals.size(); ++i)
        sigaction(handledSignals[i], &previousActions[i], nullptr);
    qDeleteAll(findChildren<QSocketNotifier*>());
    close(wakeUp);
    wakeUp = -1;
}
