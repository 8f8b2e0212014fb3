#pragma once

#include "FileTable.h"

namespace mirror {

/// The entries of the key-value store that all devices share, each as its line.
class SqliteValueShelf final : public LocalShelf<KeyValue> {
public:
    explicit SqliteValueShelf(TransactionScope& scope)
        : m_scope(scope)
        , m_files(scope, FileContent::KeyValues)
    {
    }

    std::optional<KeyValue> find(const Text& key) override;
    void store(const KeyValue& entry) override;
    void setCarrier(const Text& key, const FileKey& file) override;
    std::vector<KeyValue> unpublished(const std::optional<Text>& after, std::size_t most) override;
    qint64 carriedBy(const FileKey& file) override;
    std::vector<SeenFile> files(const QString& folder) override;
    void remember(const SeenFile& file) override;
    void forget(const FileKey& file) override;
    void forgetAll() override;

    std::vector<KeyValue> all();
    void reset() { m_files.forgetNumbers(); }

private:
    TransactionScope& m_scope;
    FileTable m_files;
};

} // namespace mirror
