#include "DBusMock.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QTest>

#include <csignal>
#include <sys/prctl.h>

namespace {

constexpr int startLimit = 20000; // milliseconds; only a failure takes that long

} // namespace

DBusMock::DBusMock(const QDBusConnection& bus, QString service, QString path, QString templateName)
    : m_bus(bus)
    , m_service(std::move(service))
    , m_path(std::move(path))
    , m_template(std::move(templateName))
{
    // A test that crashes takes it with it.
    m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_process.setStandardOutputFile(QProcess::nullDevice());
}

DBusMock::~DBusMock() { stop(); }

QString DBusMock::command(const QString& templateName)
{
    return QStringLiteral("/usr/bin/python3 -m dbusmock --session -t " DBUSMOCK_TEMPLATES "/")
        + templateName;
}

void DBusMock::start()
{
    QStringList words = command(m_template).split(QLatin1Char(' '));
    const QString program = words.takeFirst();
    m_process.start(program, words);
    const auto isThere
        = [this] { return m_bus.interface()->isServiceRegistered(m_service).value(); };
    if (!QTest::qWaitFor(isThere, startLimit))
        qFatal("No python3-dbusmock: %s", m_process.readAllStandardError().constData());
}

void DBusMock::stop()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished();
}

void DBusMock::pause() const { ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP); }

void DBusMock::goOn() const { ::kill(static_cast<pid_t>(m_process.processId()), SIGCONT); }

QStringList DBusMock::tell(const QString& method, const QVariantList& arguments) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        m_service, m_path, QStringLiteral("org.freedesktop.DBus.Mock"), method);
    message.setArguments(arguments);
    const QDBusMessage answer = m_bus.call(message);
    if (answer.type() != QDBusMessage::ReplyMessage)
        qFatal("%s: %s", qPrintable(method), qPrintable(answer.errorMessage()));
    return answer.arguments().value(0).toStringList();
}
