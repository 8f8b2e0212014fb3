#include "WebDavStore.h"

#include "Diagnostics.h"
#include "HttpDate.h"
#include "HttpExchange.h"
#include "ListingReader.h"
#include "Sha256.h"

#include <QIODevice>
#include <QNetworkProxy>
#include <QScopedValueRollback>

namespace mirror {

namespace {

using Kind = FileError::Kind;

constexpr char listedProperties[] = R"(<?xml version="1.0" encoding="utf-8"?>
<propfind xmlns="DAV:"><prop><resourcetype/><getcontentlength/></prop></propfind>)";

QByteArray basicAuthorization(const WebDavAccount& account)
{
    const QString credentials = account.user + QLatin1Char(':') + account.password;
    return "Basic " + credentials.toUtf8().toBase64();
}

/// The error with its clause made a sentence.
FileError worded(FileError error, const HttpRequest& request, const QString& path)
{
    error.sentence = QStringLiteral("%1 \"%2\": %3.")
                         .arg(QString::fromLatin1(request.verb), path, error.sentence);
    return error;
}

/// Hands the pieces of a file on, counting and hashing them.
class FileTaker {
public:
    explicit FileTaker(QIODevice& device)
        : m_device(device)
    {
    }

    std::optional<FileError> take(const QByteArray& piece)
    {
        m_size += piece.size();
        m_hash.add(piece);
        if (m_device.write(piece) == piece.size())
            return std::nullopt;
        return FileError { Kind::LocalFile, 0, std::nullopt,
            QStringLiteral("the local file could not be written") };
    }
    [[nodiscard]] Download takeDownload() { return { m_size, m_hash.takeResult() }; }

private:
    QIODevice& m_device;
    qint64 m_size = 0;
    Sha256 m_hash;
};

} // namespace

WebDavStore::WebDavStore(const WebDavAccount& account, WebDavManners manners)
    : m_address(account.root)
    , m_authorization(basicAuthorization(account))
    , m_trust(account)
    , m_manners(std::move(manners))
{
    // Through a proxy, what is meant for this machine would leave it.
    if (account.root.scheme() == QLatin1String("http"))
        m_manager.setProxy(QNetworkProxy::NoProxy);
}

WebDavStore::~WebDavStore() = default;

Outcome<QList<FileEntry>> WebDavStore::list(const QString& collection)
{
    const QString path = collectionPath(collection);
    ListingReader reader(m_address.url(path));
    const FileError doubtful { Kind::NotUnderstood, 207, std::nullopt,
        QStringLiteral("the answer is no listing of this folder") };
    HttpRequest propfind = request("PROPFIND", path, { 207 });
    propfind.head.setRawHeader("Depth", "1");
    propfind.head.setRawHeader("Content-Type", "application/xml; charset=utf-8");
    propfind.body = QByteArray(listedProperties);
    propfind.take = [&](const QByteArray& piece) {
        return reader.add(piece) ? std::nullopt : std::optional(doubtful);
    };
    propfind.limit = ListingReader::maximumSize;

    const Outcome<HttpAnswer> answer = send(propfind, path);
    if (!answer)
        return answer.error();
    if (const auto entries = reader.entries())
        return *entries;
    return worded(doubtful, propfind, path);
}

Outcome<Download> WebDavStore::get(const QString& file, QIODevice& device, qint64 limit)
{
    FileTaker taker(device);
    HttpRequest fetch = request("GET", file, { 200 });
    fetch.take = [&](const QByteArray& piece) { return taker.take(piece); };
    fetch.limit = limit;

    const Outcome<HttpAnswer> answer = send(fetch, file);
    if (!answer)
        return answer.error();
    return taker.takeDownload();
}

Outcome<> WebDavStore::put(const QString& file, const QByteArray& bytes)
{
    HttpRequest store = request("PUT", file, { 200, 201, 204 });
    store.head.setRawHeader("Content-Type", "application/octet-stream");
    store.body = bytes;

    const Outcome<HttpAnswer> answer = send(store, file);
    if (!answer)
        return answer.error();
    return {};
}

Outcome<Making> WebDavStore::makeCollection(const QString& collection)
{
    const QString path = collectionPath(collection);
    const Outcome<HttpAnswer> answer = send(request("MKCOL", path, { 201 }), path);
    if (answer)
        return Making::Made;
    if (answer.error().status == 405)
        return Making::Refused;
    return answer.error();
}

Outcome<> WebDavStore::remove(const QString& path, Trash trash)
{
    HttpRequest deletion = request("DELETE", path, { 200, 204 });
    if (trash == Trash::Skip)
        deletion.head.setRawHeader("X-NC-Skip-Trashbin", "true");

    const Outcome<HttpAnswer> answer = send(deletion, path);
    if (answer)
        return {};
    FileError error = answer.error();
    if (error.status == 207) // what was not deleted, and why; the rest was
        error.kind = Kind::Server;
    return error;
}

HttpRequest WebDavStore::request(
    const QByteArray& verb, const QString& path, const QList<int>& successes) const
{
    QNetworkRequest head(m_address.url(path));
    // Followed by Qt, a redirected PUT ends as a GET that succeeds, with nothing stored.
    head.setAttribute(
        QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    for (const auto attribute :
        { QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
            QNetworkRequest::AuthenticationReuseAttribute })
        head.setAttribute(attribute, QNetworkRequest::Manual);
    head.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    head.setRawHeader("Authorization", m_authorization);
    head.setRawHeader("User-Agent", m_manners.userAgent);
    head.setRawHeader("Accept-Encoding", "identity");
    head.setRawHeader("Cache-Control", "no-cache");
    return { verb, head, std::nullopt, successes, {} };
}

Outcome<HttpAnswer> WebDavStore::send(const HttpRequest& request, const QString& path)
{
    Outcome<HttpAnswer> answer = sendToServer(request);
    if (answer) {
        m_serverDate = httpDate(answer->date);
        return answer;
    }
    return worded(answer.error(), request, path);
}

Outcome<HttpAnswer> WebDavStore::sendToServer(const HttpRequest& request)
{
    if (!m_address.isSecure())
        return FileError { Kind::Untrusted, 0, std::nullopt,
            QStringLiteral("the address is neither https nor on this machine") };
    if (m_isWaiting)
        fatalError("A WebDAV store was called while it waited for an answer.");
    const QScopedValueRollback waiting(m_isWaiting, true);
    HttpExchange exchange(
        m_manager, request, m_trust, *m_manners.cancellation, m_manners.idleTimeout);
    return exchange.run();
}

} // namespace mirror
