#include "GnomeKeyring.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QTest>

#include <csignal>
#include <sys/prctl.h>

namespace {

constexpr int startLimit = 20000; // milliseconds; only a failure takes that long

const QString service = QStringLiteral("org.freedesktop.secrets");
const QString root = QStringLiteral("/org/freedesktop/secrets");
const QString serviceInterface = QStringLiteral("org.freedesktop.Secret.Service");
const QByteArray masterPassword = "master";

/// A secret on its way over the bus.
struct Secret {
    QDBusObjectPath session;
    QByteArray parameters;
    QByteArray value;
    QString contentType;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Secret& secret)
{
    argument.beginStructure();
    argument << secret.session << secret.parameters << secret.value << secret.contentType;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Secret& secret)
{
    argument.beginStructure();
    argument >> secret.session >> secret.parameters >> secret.value >> secret.contentType;
    argument.endStructure();
    return argument;
}

QDBusObjectPath collection() { return QDBusObjectPath(root + QLatin1String("/collection/login")); }

} // namespace

Q_DECLARE_METATYPE(Secret)

GnomeKeyring::GnomeKeyring(const QDBusConnection& bus)
    : m_bus(bus)
{
    qDBusRegisterMetaType<Secret>();
    // A test that crashes takes it with it.
    m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_process.setProcessEnvironment(environment());
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(m_folder.filePath(QStringLiteral("errors")));
}

GnomeKeyring::~GnomeKeyring() { stop(); }

QProcessEnvironment GnomeKeyring::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : { "HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME" })
        environment.insert(QString::fromLatin1(name), m_folder.path());
    return environment;
}

void GnomeKeyring::start(Lock lock)
{
    QStringList arguments { QStringLiteral("--foreground"), QStringLiteral("--components=secrets"),
        QStringLiteral("--control-directory=") + m_folder.filePath(QStringLiteral("control")) };
    if (lock == Lock::Unlocked)
        arguments.append(QStringLiteral("--unlock"));
    m_process.start(QStringLiteral("gnome-keyring-daemon"), arguments);
    if (lock == Lock::Unlocked)
        m_process.write(masterPassword);
    m_process.closeWriteChannel();
    const auto isThere = [this] { return m_bus.interface()->isServiceRegistered(service).value(); };
    if (!QTest::qWaitFor(isThere, startLimit))
        qFatal("gnome-keyring-daemon does not start.");
}

void GnomeKeyring::stop()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    m_process.waitForFinished();
}

void GnomeKeyring::lock() const
{
    call(serviceInterface, QStringLiteral("Lock"),
        { QVariant::fromValue(QList<QDBusObjectPath> { collection() }) });
}

/// As the user's login does it.
void GnomeKeyring::unlock() const
{
    QDBusMessage open = QDBusMessage::createMethodCall(
        service, root, serviceInterface, QStringLiteral("OpenSession"));
    open << QStringLiteral("plain") << QVariant::fromValue(QDBusVariant(QString()));
    const auto session = m_bus.call(open).arguments().value(1).value<QDBusObjectPath>();
    call(QStringLiteral("org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface"),
        QStringLiteral("UnlockWithMasterPassword"),
        { QVariant::fromValue(collection()),
            QVariant::fromValue(
                Secret { session, {}, masterPassword, QStringLiteral("text/plain") }) });
}

void GnomeKeyring::call(
    const QString& interface, const QString& method, const QVariantList& arguments) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, root, interface, method);
    message.setArguments(arguments);
    const QDBusMessage answer = m_bus.call(message);
    if (answer.type() != QDBusMessage::ReplyMessage)
        qFatal("%s: %s", qPrintable(method), qPrintable(answer.errorMessage()));
}

void GnomeKeyring::run(const QString& line, const QString& typed) const
{
    QProcess shell;
    shell.setProcessEnvironment(environment());
    shell.start(QStringLiteral("sh"), { QStringLiteral("-c"), line });
    shell.write(typed.toUtf8());
    shell.closeWriteChannel();
    if (!shell.waitForFinished(startLimit) || shell.exitCode() != 0)
        qFatal("%s: %s", qPrintable(line), shell.readAllStandardError().constData());
}
