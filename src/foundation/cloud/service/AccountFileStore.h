#pragma once

#include "CloudAccounts.h"
#include "WebDavStore.h"

namespace mirror {

/// The files of the user's account. The password is asked for at the first request, and forgotten
/// with the connection when it is closed.
class AccountFileStore final : public FileStore {
public:
    /// All must outlive this.
    AccountFileStore(CloudAccounts& accounts, WebDavManners manners)
        : m_accounts(accounts)
        , m_manners(std::move(manners))
    {
    }

    /// Requests go to this account from now on; the pin is that of its certificate, or empty.
    void use(const CloudAccount& account, const QByteArray& pin);
    void close() { m_store.reset(); }

    /// Whether a request was made, and so a password given, since the last close().
    [[nodiscard]] bool isOpen() const { return m_store != nullptr; }
    /// While it is open: the certificate that the account is bound to.
    [[nodiscard]] QByteArray certificatePin() const { return m_store->certificatePin(); }

    Outcome<QList<FileEntry>> list(const QString& collection) override;
    Outcome<Download> get(const QString& file, QIODevice& device, qint64 limit) override;
    Outcome<> put(const QString& file, const QByteArray& bytes) override;
    Outcome<Making> makeCollection(const QString& collection) override;
    Outcome<> remove(const QString& path, Trash trash) override;
    [[nodiscard]] std::optional<QDateTime> serverDate() const override;

private:
    [[nodiscard]] Outcome<> open();

    CloudAccounts& m_accounts;
    WebDavManners m_manners;
    std::optional<CloudAccount> m_account;
    QByteArray m_pin;
    std::unique_ptr<WebDavStore> m_store;
};

} // namespace mirror
