// Asks for the password of the account in the given cloud.ini, or of the online account, says all
// that can be said, and goes on holding the password until it is ended. With "whole" behind it, its
// core dumps are whole nevertheless; with "outlive" it ends by itself once there is no bus.

#include "CloudAccounts.h"
#include "Keyring.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextStream>
#include <QTimer>

#include <unistd.h>

using namespace mirror;

namespace {

void say(const CloudAccounts& accounts)
{
    QTextStream(stdout) << static_cast<int>(accounts.state()) << ' ' << accounts.problem() << ' '
                        << accounts.account()->identity << ' '
                        << accounts.account()->root.toString() << ' ' << accounts.account()->user
                        << Qt::endl;
}

void makeCoreDumpsWhole()
{
    QFile filter(QStringLiteral("/proc/self/coredump_filter"));
    if (!filter.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || filter.write("0x33") != 4)
        qFatal("The core dumps cannot be made whole.");
}

/// Asks once more when the bus is gone: by the answer, whatever ends the process for that loss has
/// done so.
int outliveBus()
{
    QTimer often; // Qt does not tell of it
    often.start(10);
    while (QDBusConnection::sessionBus().isConnected())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    const Outcome<QString> password = PasswordRequest::wait(
        keyringPassword(QDBusConnection::sessionBus(), QStringLiteral("ann@cloud.example")),
        std::chrono::seconds(20), Cancellation(), &often, [] {});
    return password ? 1 : 0;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    AccountManners manners;
    manners.iniFile = QCoreApplication::arguments().value(1);
    CloudAccounts accounts(manners);
    accounts.start();
    while (accounts.state() == AccountState::Unknown)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    say(accounts);

    const Outcome<QString> password = accounts.password();
    if (!password)
        qFatal("There is no password: %s", qPrintable(password.error().sentence));
    accounts.refused();
    say(accounts);
    if (QCoreApplication::arguments().contains(QStringLiteral("whole")))
        makeCoreDumpsWhole();
    QTextStream(stdout) << "held " << password->size() << Qt::endl;
    if (QCoreApplication::arguments().contains(QStringLiteral("outlive")))
        return outliveBus();
    while (true)
        ::pause();
}
