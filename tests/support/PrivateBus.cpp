#include "PrivateBus.h"

#include <QFile>

#include <csignal>
#include <sys/prctl.h>

namespace {

constexpr auto configuration = R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <servicedir>%1</servicedir>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

void writeFile(const QString& name, const QString& text)
{
    QFile file(name);
    const QByteArray bytes = text.toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("The bus's files cannot be written.");
}

} // namespace

PrivateBus::PrivateBus(const QList<Service>& services)
{
    const QString file = m_folder.filePath(QStringLiteral("bus.conf"));
    writeFile(file, QString::fromLatin1(configuration).arg(m_folder.path()));
    writeServices(services);
    // A test that crashes takes the bus with it.
    m_daemon.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_daemon.start(QStringLiteral("dbus-daemon"),
        { QStringLiteral("--config-file=") + file, QStringLiteral("--nofork"),
            QStringLiteral("--print-address") });
    if (!m_daemon.waitForReadyRead())
        return;
    m_address = QString::fromLatin1(m_daemon.readLine()).trimmed();
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_address.toLatin1());
}

PrivateBus::~PrivateBus()
{
    m_daemon.terminate();
    m_daemon.waitForFinished();
}

void PrivateBus::writeServices(const QList<Service>& services) const
{
    for (const Service& service : services) {
        writeFile(m_folder.filePath(service.name + QLatin1String(".service")),
            QStringLiteral("[D-BUS Service]\nName=%1\nExec=%2\n")
                .arg(service.name, service.command));
    }
}
