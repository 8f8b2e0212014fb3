#pragma once

#include <QProcess>
#include <QSslCertificate>
#include <QTemporaryDir>
#include <QUrl>

/// A WebDAV server of the test's own: Apache with mod_dav on free ports of this machine, everything
/// it needs and writes in a temporary folder that goes with it. Its one folder is /dav/.
class ApacheServer {
public:
    static QString user() { return QStringLiteral("Zoë"); }
    static QString password() { return QStringLiteral("pâss:word 1"); }
    static constexpr int largestBody = 2 * 1024 * 1024; ///< bytes; more is refused with 413

    /// Started, or the process ends with the server's own words.
    ApacheServer();
    ~ApacheServer();
    ApacheServer(const ApacheServer&) = delete;
    ApacheServer& operator=(const ApacheServer&) = delete;

    [[nodiscard]] QUrl plainUrl() const { return url(QStringLiteral("http"), m_plainPort); }
    [[nodiscard]] QUrl secureUrl() const { return url(QStringLiteral("https"), m_securePort); }

    /// The self-signed certificate, and its SHA-256 in hexadecimal digits.
    [[nodiscard]] QSslCertificate certificate() const;
    [[nodiscard]] QByteArray certificateDigest() const;
    /// Goes on, on the same ports, with another self-signed certificate.
    void changeCertificate();

private:
    [[nodiscard]] static QUrl url(const QString& scheme, int port);
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }
    void makeFolders();
    void makeCertificate();
    void writePasswords() const;
    void writeConfiguration() const;
    void findPorts();
    [[nodiscard]] bool start();
    void stop();

    QTemporaryDir m_folder;
    QProcess m_process;
    int m_plainPort = 0;
    int m_securePort = 0;
};
