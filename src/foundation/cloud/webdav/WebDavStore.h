#pragma once

#include "Cancellation.h"
#include "CertificateTrust.h"
#include "FileStore.h"
#include "WebDavAccount.h"
#include "WebDavAddress.h"

#include <QNetworkAccessManager>

#include <memory>

namespace mirror {

struct HttpAnswer;
struct HttpRequest;

/// How a WebDavStore speaks.
struct WebDavManners {
    QByteArray userAgent; ///< program and version
    std::chrono::milliseconds idleTimeout = std::chrono::seconds(30); ///< without a byte either way
    std::shared_ptr<Cancellation> cancellation = std::make_shared<Cancellation>();
};

/// The user's WebDAV folder (RFC 4918), over one connection at a time that is kept open.
///
/// Credentials go to the account's server alone, over TLS or within this machine, and into no
/// error. It is made, used and destroyed on one thread, to which events are delivered while a call
/// waits; a call from within such an event is a broken contract.
/// Its destruction waits for Qt's network thread, up to five seconds where a server that was just
/// broken off with goes on sending as fast as that thread reads.
class WebDavStore final : public FileStore {
public:
    WebDavStore(const WebDavAccount& account, WebDavManners manners);
    ~WebDavStore() override;

    Outcome<QList<FileEntry>> list(const QString& collection) override;
    /// A file under a content coding is an error: none was asked for.
    Outcome<Download> get(const QString& file, QIODevice& device, qint64 limit) override;
    Outcome<> put(const QString& file, const QByteArray& bytes) override;
    Outcome<Making> makeCollection(const QString& collection) override;
    Outcome<> remove(const QString& path, Trash trash) override;
    [[nodiscard]] std::optional<QDateTime> serverDate() const override { return m_serverDate; }

    /// The certificate that the account is bound to from now on, as WebDavAccount has it: the given
    /// one, or the first self-signed one seen. The caller keeps it for the next store.
    [[nodiscard]] QByteArray certificatePin() const { return m_trust.pin(); }

private:
    [[nodiscard]] HttpRequest request(
        const QByteArray& verb, const QString& path, const QList<int>& successes) const;
    Outcome<HttpAnswer> send(const HttpRequest& request, const QString& path);
    Outcome<HttpAnswer> sendToServer(const HttpRequest& request);

    WebDavAddress m_address;
    QByteArray m_authorization;
    CertificateTrust m_trust;
    WebDavManners m_manners;
    std::optional<QDateTime> m_serverDate;
    bool m_isWaiting = false;
    QNetworkAccessManager m_manager;
};

} // namespace mirror
