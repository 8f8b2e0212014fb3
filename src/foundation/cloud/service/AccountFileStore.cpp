#include "AccountFileStore.h"

namespace mirror {

namespace {

/// Why nothing can be asked; never "not found", which would speak of the folder.
FileError closed(FileError reason)
{
    if (reason.kind != FileError::Kind::Cancelled)
        reason.kind = FileError::Kind::Unauthorised;
    return reason;
}

} // namespace

void AccountFileStore::use(const CloudAccount& account, const QByteArray& pin)
{
    close();
    m_account = account;
    m_pin = pin;
}

Outcome<> AccountFileStore::open()
{
    if (m_store)
        return {};
    if (!m_account)
        return closed({ {}, 0, std::nullopt, QStringLiteral("There is no cloud account.") });
    const auto password = m_accounts.password();
    if (!password)
        return closed(password.error());
    m_store = std::make_unique<WebDavStore>(
        WebDavAccount { m_account->root, m_account->user, *password, m_account->selfSigned, m_pin },
        m_manners);
    return {};
}

Outcome<QList<FileEntry>> AccountFileStore::list(const QString& collection)
{
    const auto opened = open();
    return opened ? m_store->list(collection) : opened.error();
}

Outcome<Download> AccountFileStore::get(const QString& file, QIODevice& device, qint64 limit)
{
    const auto opened = open();
    return opened ? m_store->get(file, device, limit) : opened.error();
}

Outcome<> AccountFileStore::put(const QString& file, const QByteArray& bytes)
{
    const auto opened = open();
    return opened ? m_store->put(file, bytes) : opened.error();
}

Outcome<Making> AccountFileStore::makeCollection(const QString& collection)
{
    const auto opened = open();
    return opened ? m_store->makeCollection(collection) : opened.error();
}

Outcome<> AccountFileStore::remove(const QString& path, Trash trash)
{
    const auto opened = open();
    return opened ? m_store->remove(path, trash) : opened.error();
}

std::optional<QDateTime> AccountFileStore::serverDate() const
{
    return m_store ? m_store->serverDate() : std::nullopt;
}

} // namespace mirror
