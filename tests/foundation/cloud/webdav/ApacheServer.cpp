#include "ApacheServer.h"

#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

constexpr int startLimit = 20000; // milliseconds; only a failure takes that long
constexpr int attempts = 5; // another program may take a port between finding and using it

constexpr char configuration[] = R"(
ServerRoot "%1"
ServerName localhost
DefaultRuntimeDir "%1"
PidFile "%1/pid"
ErrorLog "%1/errors"
Mutex pthread
Listen 127.0.0.1:%2
Listen 127.0.0.1:%3
StartServers 1
ServerLimit 1
ThreadsPerChild 8
MaxRequestWorkers 8
User www-data
Group www-data
LoadModule mpm_event_module /usr/lib/apache2/modules/mod_mpm_event.so
LoadModule authn_core_module /usr/lib/apache2/modules/mod_authn_core.so
LoadModule authn_file_module /usr/lib/apache2/modules/mod_authn_file.so
LoadModule authz_core_module /usr/lib/apache2/modules/mod_authz_core.so
LoadModule authz_user_module /usr/lib/apache2/modules/mod_authz_user.so
LoadModule auth_basic_module /usr/lib/apache2/modules/mod_auth_basic.so
LoadModule dav_module /usr/lib/apache2/modules/mod_dav.so
LoadModule dav_fs_module /usr/lib/apache2/modules/mod_dav_fs.so
LoadModule ssl_module /usr/lib/apache2/modules/mod_ssl.so
DocumentRoot "%1/documents"
DavLockDB "%1/locks/db"
<VirtualHost 127.0.0.1:%3>
    SSLEngine on
    SSLCertificateFile "%1/certificate.pem"
    SSLCertificateKeyFile "%1/key.pem"
</VirtualHost>
<Directory "%1/documents/dav">
    Dav On
    LimitRequestBody %4
    AuthType Basic
    AuthName "bills"
    AuthUserFile "%1/users"
    Require valid-user
</Directory>
)";

void writeFile(const QString& name, const QByteArray& bytes)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("The server's files cannot be written.");
}

void run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(startLimit) || process.exitCode() != 0)
        qFatal("%s: %s", qPrintable(program), process.readAllStandardError().constData());
}

bool accepts(int port)
{
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), static_cast<quint16>(port));
    return socket.waitForConnected(1000);
}

} // namespace

ApacheServer::ApacheServer()
{
    makeFolders();
    makeCertificate();
    writePasswords();
    for (int attempt = 0; attempt < attempts; ++attempt) {
        findPorts();
        writeConfiguration();
        if (start())
            return;
    }
    QFile errors(path(QStringLiteral("errors")));
    const bool isOpen = errors.open(QIODevice::ReadOnly);
    qFatal("Apache does not start: %s%s", m_process.readAllStandardError().constData(),
        isOpen ? errors.readAll().constData() : "");
}

ApacheServer::~ApacheServer() { stop(); }

void ApacheServer::makeFolders()
{
    for (const QString& name : { QStringLiteral("documents/dav"), QStringLiteral("locks") })
        QDir(m_folder.path()).mkpath(name);
    if (::geteuid() != 0)
        return;
    // Started by root, the server works as another user, to whom these must belong.
    run(QStringLiteral("chown"),
        { QStringLiteral("-R"), QStringLiteral("www-data:www-data"), m_folder.path() });
}

void ApacheServer::makeCertificate()
{
    run(QStringLiteral("openssl"),
        QStringLiteral("req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 "
                       "-subj /CN=elsewhere.example -keyout %1/key.pem -out %1/certificate.pem")
            .arg(m_folder.path())
            .split(QLatin1Char(' ')));
}

void ApacheServer::writePasswords() const
{
    const QByteArray hash
        = QCryptographicHash::hash(password().toUtf8(), QCryptographicHash::Sha1).toBase64();
    writeFile(path(QStringLiteral("users")), user().toUtf8() + ":{SHA}" + hash + "\n");
}

void ApacheServer::writeConfiguration() const
{
    const QString text = QString::fromLatin1(configuration)
                             .arg(m_folder.path())
                             .arg(m_plainPort)
                             .arg(m_securePort)
                             .arg(largestBody);
    writeFile(path(QStringLiteral("configuration")), text.toUtf8());
}

void ApacheServer::findPorts()
{
    QTcpServer plain;
    QTcpServer secure;
    if (!plain.listen(QHostAddress::LocalHost) || !secure.listen(QHostAddress::LocalHost))
        qFatal("There are no free ports.");
    m_plainPort = plain.serverPort();
    m_securePort = secure.serverPort();
}

bool ApacheServer::start()
{
    // A test that crashes takes the server with it.
    m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_process.start(QStringLiteral("/usr/sbin/apache2"),
        { QStringLiteral("-DFOREGROUND"), QStringLiteral("-f"),
            path(QStringLiteral("configuration")) });
    if (!m_process.waitForStarted(startLimit))
        qFatal("There is no Apache to test with: install apache2-bin.");
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < startLimit && !m_process.waitForFinished(10))
        if (accepts(m_plainPort) && accepts(m_securePort))
            return true;
    stop();
    return false;
}

void ApacheServer::stop()
{
    m_process.terminate();
    if (!m_process.waitForFinished(startLimit))
        m_process.kill();
    m_process.waitForFinished(startLimit);
}

QUrl ApacheServer::url(const QString& scheme, int port)
{
    return QUrl(QStringLiteral("%1://127.0.0.1:%2/dav").arg(scheme).arg(port));
}

QSslCertificate ApacheServer::certificate() const
{
    const QList<QSslCertificate> certificates
        = QSslCertificate::fromPath(path(QStringLiteral("certificate.pem")));
    if (certificates.size() != 1)
        qFatal("There is no certificate.");
    return certificates.first();
}

QByteArray ApacheServer::certificateDigest() const
{
    return certificate().digest(QCryptographicHash::Sha256).toHex();
}

void ApacheServer::changeCertificate()
{
    stop();
    makeCertificate();
    if (!start())
        qFatal("Apache does not start again.");
}
