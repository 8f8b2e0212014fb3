#include "HttpExchange.h"

#include "CertificateTrust.h"
#include "HttpDate.h"
#include "StatusError.h"

#include <QDir>
#include <QMetaEnum>
#include <QNetworkAccessManager>
#include <QSslConfiguration>

#include <netinet/in.h>
#include <netinet/tcp.h>

namespace mirror {

namespace {

using Kind = FileError::Kind;

constexpr qint64 pieceSize = 64LL * 1024; // bytes
constexpr qint64 readAhead = 4 * pieceSize;

/// How much of a refusal's text is read, so that the connection can be used again.
constexpr qint64 longestRefusal = pieceSize;

FileError error(Kind kind, const QString& sentence) { return { kind, 0, std::nullopt, sentence }; }

FileError tooLong() { return error(Kind::NotUnderstood, QStringLiteral("the answer is too long")); }

FileError notTrusted()
{
    return error(Kind::Untrusted, QStringLiteral("the server's certificate is not trusted"));
}

FileError changed()
{
    return error(Kind::Untrusted, QStringLiteral("the server's certificate has changed"));
}

/// In our words: what Qt says of an error may hold what the server wrote.
FileError networkError(QNetworkReply::NetworkError code)
{
    const auto name = QMetaEnum::fromType<QNetworkReply::NetworkError>().valueToKey(code);
    return error(
        Kind::Network, QStringLiteral("no whole answer: %1").arg(QString::fromLatin1(name)));
}

/// The kernel holds the end of a file back until the server has acknowledged the rest, which many
/// do 40 ms late. Qt leaves that as it is and hides its sockets, so that all of this process are
/// told; to anything else the option means nothing.
void sendWithoutDelay()
{
    const QDir open(QStringLiteral("/proc/self/fd"));
    for (const QString& descriptor : open.entryList(QDir::System | QDir::Files)) {
        const int on = 1;
        ::setsockopt(descriptor.toInt(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    }
}

} // namespace

HttpExchange::HttpExchange(QNetworkAccessManager& manager, HttpRequest request,
    CertificateTrust& trust, const Cancellation& cancellation,
    std::chrono::milliseconds idleTimeout)
    : m_manager(manager)
    , m_request(std::move(request))
    , m_trust(trust)
    , m_cancellation(cancellation)
{
    m_idle.setInterval(idleTimeout);
    m_idle.setSingleShot(true);
    connect(&m_idle, &QTimer::timeout, this,
        [this] { giveUp(error(Kind::Network, QStringLiteral("the server was silent"))); });
}

Outcome<HttpAnswer> HttpExchange::run()
{
    const FileError cancelled = error(Kind::Cancelled, QStringLiteral("cancelled"));
    connect(&m_cancellation, &Cancellation::cancelled, this, [=, this] { giveUp(cancelled); });
    if (m_cancellation.isCancelled())
        return cancelled;

    send();
    m_idle.start();
    if (!m_reply->isFinished())
        m_loop.exec();
    takeBody();

    if (std::optional<FileError> reason = failure()) {
        reason->status = status();
        return *reason;
    }
    return HttpAnswer { status(), m_reply->rawHeader("Date") };
}

void HttpExchange::send()
{
    m_reply.reset(m_request.body
            ? m_manager.sendCustomRequest(m_request.head, m_request.verb, *m_request.body)
            : m_manager.sendCustomRequest(m_request.head, m_request.verb));
    m_reply->setReadBufferSize(readAhead);
    const auto stirs = [this] { m_idle.start(); };
    connect(m_reply.get(), &QNetworkReply::uploadProgress, this, stirs);
    if (m_request.body)
        connect(m_reply.get(), &QNetworkReply::requestSent, this, &sendWithoutDelay);
    connect(m_reply.get(), &QNetworkReply::metaDataChanged, this, &HttpExchange::readHead);
    connect(m_reply.get(), &QNetworkReply::sslErrors, this, &HttpExchange::judgeErrors);
    connect(m_reply.get(), &QNetworkReply::encrypted, this, &HttpExchange::judgeCertificate);
    connect(m_reply.get(), &QNetworkReply::readyRead, this, &HttpExchange::takeBody);
    connect(m_reply.get(), &QNetworkReply::finished, &m_loop, &QEventLoop::quit);
}

void HttpExchange::judgeErrors(const QList<QSslError>& errors)
{
    const QList<QSslError> overlooked = m_trust.overlooked(errors);
    if (overlooked.isEmpty())
        giveUp(m_trust.isBound() ? changed() : notTrusted());
    else
        m_reply->ignoreSslErrors(overlooked);
}

void HttpExchange::judgeCertificate()
{
    m_idle.start();
    if (!m_trust.accepts(m_reply->sslConfiguration().peerCertificate()))
        giveUp(changed());
}

void HttpExchange::readHead()
{
    m_idle.start();
    if (isSuccess() && announcedSize() > m_request.limit)
        giveUp(tooLong());
}

void HttpExchange::takeBody()
{
    m_idle.start();
    while (!m_failure && m_reply->bytesAvailable() > 0)
        takePiece(m_reply->read(pieceSize));
}

void HttpExchange::takePiece(const QByteArray& piece)
{
    m_received += piece.size();
    if (!isSuccess() && m_received > longestRefusal)
        giveUp(refusal());
    else if (isSuccess() && m_received > m_request.limit)
        giveUp(tooLong());
    else if (isSuccess() && m_request.take)
        if (const std::optional<FileError> reason = m_request.take(piece))
            giveUp(*reason);
}

void HttpExchange::giveUp(const FileError& reason)
{
    if (m_failure)
        return;
    m_failure = reason;
    if (m_reply)
        m_reply->abort();
}

FileError HttpExchange::refusal() const
{
    FileError reason = errorOfStatus(status());
    const QByteArray wait = m_reply->rawHeader("Retry-After");
    const std::optional<QDateTime> now = httpDate(m_reply->rawHeader("Date"));
    reason.retryAfter = retryAfter(wait, now.value_or(QDateTime::currentDateTimeUtc()));
    return reason;
}

std::optional<FileError> HttpExchange::failure() const
{
    if (m_failure)
        return m_failure;
    // The thread ends: nobody waits for the answer any more, and what of it came tells nothing.
    if (!m_reply->isFinished())
        return error(Kind::Cancelled, QStringLiteral("cancelled"));
    if (status() != 0 && !isSuccess())
        return refusal();
    if (m_reply->error() != QNetworkReply::NoError)
        return networkError(m_reply->error());
    if (status() != 204 && announcedSize().value_or(m_received) != m_received)
        return error(Kind::Network, QStringLiteral("the answer was cut short"));
    if (!isPlain())
        return error(Kind::NotUnderstood, QStringLiteral("the answer's body is coded"));
    return std::nullopt;
}

std::optional<qint64> HttpExchange::announcedSize() const
{
    bool isKnown = false;
    const qint64 size = m_reply->rawHeader("Content-Length").toLongLong(&isKnown);
    return isKnown ? std::optional(size) : std::nullopt;
}

bool HttpExchange::isPlain() const
{
    const QByteArray coding = m_reply->rawHeader("Content-Encoding").trimmed().toLower();
    return coding.isEmpty() || coding == "identity";
}

int HttpExchange::status() const
{
    return m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

} // namespace mirror
