#pragma once

#include "Cancellation.h"
#include "FileError.h"

#include <QEventLoop>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

#include <functional>
#include <memory>

class QNetworkAccessManager;

namespace mirror {

class CertificateTrust;

/// What is asked of a server, and which answer is a success.
struct HttpRequest {
    /// Takes the next piece of a successful answer's body, or says why the rest is not wanted.
    using Taker = std::function<std::optional<FileError>(const QByteArray&)>;

    QByteArray verb;
    QNetworkRequest head;
    std::optional<QByteArray> body;
    QList<int> successes; ///< HTTP status codes
    Taker take; ///< without one, a body is read and dropped
    qint64 limit
        = 64LL * 1024; ///< of a successful answer's body, in bytes; a longer one is an error
};

/// The head of a successful answer.
struct HttpAnswer {
    int status = 0;
    QByteArray date; ///< as the server wrote it, empty where it did not
};

/// Sends one request and waits for the answer to its end, in an event loop on the calling thread.
/// Follows nothing, keeps no more than a few pieces in memory, and believes no body that is shorter
/// than its announced length.
class HttpExchange : public QObject {
    Q_OBJECT

public:
    HttpExchange(QNetworkAccessManager& manager, HttpRequest request, CertificateTrust& trust,
        const Cancellation& cancellation, std::chrono::milliseconds idleTimeout);

    /// To be called once. The sentence of an error is but a clause: what was asked is not in it.
    [[nodiscard]] Outcome<HttpAnswer> run();

private:
    void send();
    void judgeErrors(const QList<QSslError>& errors);
    void judgeCertificate();
    void readHead();
    void takeBody();
    void takePiece(const QByteArray& piece);
    void giveUp(const FileError& reason);
    [[nodiscard]] FileError refusal() const;
    [[nodiscard]] std::optional<FileError> failure() const;
    [[nodiscard]] std::optional<qint64> announcedSize() const;
    [[nodiscard]] bool isPlain() const;
    [[nodiscard]] int status() const;
    [[nodiscard]] bool isSuccess() const { return m_request.successes.contains(status()); }

    QNetworkAccessManager& m_manager;
    HttpRequest m_request;
    CertificateTrust& m_trust;
    const Cancellation& m_cancellation;
    QTimer m_idle;
    QEventLoop m_loop;
    std::unique_ptr<QNetworkReply> m_reply;
    qint64 m_received = 0; // bytes of the body
    std::optional<FileError> m_failure; // why it was given up
};

} // namespace mirror
