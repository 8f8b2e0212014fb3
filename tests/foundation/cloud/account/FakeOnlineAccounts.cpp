#include "FakeOnlineAccounts.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QTest>

#include <csignal>
#include <sys/prctl.h>

namespace {

constexpr int startLimit = 20000; // milliseconds; only a failure takes that long

} // namespace

QString FakeOnlineAccounts::service() { return QStringLiteral("org.gnome.OnlineAccounts"); }

QString FakeOnlineAccounts::command()
{
    return QStringLiteral("/usr/bin/python3 -m dbusmock --session -t " ONLINE_ACCOUNTS_TEMPLATE);
}

FakeOnlineAccounts::FakeOnlineAccounts(const QDBusConnection& bus)
    : m_bus(bus)
{
    // A test that crashes takes it with it.
    m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_process.setStandardOutputFile(QProcess::nullDevice());
}

FakeOnlineAccounts::~FakeOnlineAccounts() { stop(); }

void FakeOnlineAccounts::start()
{
    QStringList words = command().split(QLatin1Char(' '));
    const QString program = words.takeFirst();
    m_process.start(program, words);
    const auto isThere
        = [this] { return m_bus.interface()->isServiceRegistered(service()).value(); };
    if (!QTest::qWaitFor(isThere, startLimit))
        qFatal("No python3-dbusmock: %s", m_process.readAllStandardError().constData());
}

void FakeOnlineAccounts::stop()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished();
}

void FakeOnlineAccounts::pause() const
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP);
}

void FakeOnlineAccounts::goOn() const
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGCONT);
}

void FakeOnlineAccounts::add(const Account& account) const
{
    call(QStringLiteral("AddAccount"),
        { account.id, account.kind, account.identity, account.uri, account.password,
            account.acceptsErrors });
}

QStringList FakeOnlineAccounts::tell(const QString& method, const QStringList& arguments) const
{
    return call(method, QVariantList(arguments.cbegin(), arguments.cend()));
}

QStringList FakeOnlineAccounts::call(const QString& method, const QVariantList& arguments) const
{
    QDBusMessage message
        = QDBusMessage::createMethodCall(service(), QStringLiteral("/org/gnome/OnlineAccounts"),
            QStringLiteral("org.freedesktop.DBus.Mock"), method);
    message.setArguments(arguments);
    const QDBusMessage answer = m_bus.call(message);
    if (answer.type() != QDBusMessage::ReplyMessage)
        qFatal("%s: %s", qPrintable(method), qPrintable(answer.errorMessage()));
    return answer.arguments().value(0).toStringList();
}
