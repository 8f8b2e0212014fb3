#pragma once

#include "WebDavStore.h"

/// Counts the requests of a store.
class CountingStore final : public mirror::FileStore {
public:
    CountingStore(const QUrl& root, const QString& user, const QString& password)
        : m_store({ root, user, password, mirror::WebDavAccount::SelfSigned::Refuse, {} },
            { "bench", std::chrono::seconds(30), std::make_shared<mirror::Cancellation>() })
    {
    }

    int takeCount() { return std::exchange(m_count, 0); }

    mirror::Outcome<QList<mirror::FileEntry>> list(const QString& collection) override
    {
        ++m_count;
        return m_store.list(collection);
    }
    mirror::Outcome<mirror::Download> get(
        const QString& file, QIODevice& device, qint64 limit) override
    {
        ++m_count;
        return m_store.get(file, device, limit);
    }
    mirror::Outcome<> put(const QString& file, const QByteArray& bytes) override
    {
        ++m_count;
        return m_store.put(file, bytes);
    }
    mirror::Outcome<mirror::Making> makeCollection(const QString& collection) override
    {
        ++m_count;
        return m_store.makeCollection(collection);
    }
    mirror::Outcome<> remove(const QString& path, mirror::Trash trash) override
    {
        ++m_count;
        return m_store.remove(path, trash);
    }
    [[nodiscard]] std::optional<QDateTime> serverDate() const override
    {
        return m_store.serverDate();
    }

private:
    mirror::WebDavStore m_store;
    int m_count = 0;
};
