#pragma once

#include "LocalMirror.h"

#include <functional>
#include <map>

namespace mirror {

/// The rows and files of one kind, in memory.
template <class Row> class MemoryShelf final : public LocalShelf<Row> {
public:
    using Key = typename LocalShelf<Row>::Key;

    struct Carried {
        Row row;
        std::optional<FileKey> carrier;
    };
    struct Data {
        std::map<Key, Carried> rows;
        std::map<QString, SeenFile> files; // by path
    };

    explicit MemoryShelf(std::function<void()> called)
        : m_called(std::move(called))
    {
    }

    [[nodiscard]] Data& data() { return m_data; }

    std::optional<Row> find(const Key& key) override
    {
        m_called();
        const auto found = m_data.rows.find(key);
        return found == m_data.rows.end() ? std::nullopt : std::optional(found->second.row);
    }
    void store(const Row& row) override
    {
        m_called();
        m_data.rows.insert_or_assign(keyOf(row), Carried { row, std::nullopt });
    }
    void setCarrier(const Key& key, const FileKey& file) override
    {
        m_called();
        m_data.rows.at(key).carrier = file;
    }
    std::vector<Row> unpublished(const std::optional<Key>& after, std::size_t most) override
    {
        m_called();
        std::vector<Row> rows;
        auto each = after ? m_data.rows.upper_bound(*after) : m_data.rows.begin();
        for (; each != m_data.rows.end() && rows.size() < most; ++each) {
            if (!each->second.carrier)
                rows.push_back(each->second.row);
        }
        return rows;
    }
    qint64 carriedBy(const FileKey& file) override
    {
        m_called();
        return std::ranges::count_if(
            m_data.rows, [&](const auto& each) { return each.second.carrier == file; });
    }
    std::vector<SeenFile> files(const QString& folder) override
    {
        m_called();
        std::vector<SeenFile> files;
        for (const auto& [path, file] : m_data.files) {
            if (file.key.folder == folder)
                files.push_back(file);
        }
        return files;
    }
    void remember(const SeenFile& file) override
    {
        m_called();
        m_data.files.insert_or_assign(file.key.path(), file);
    }
    void forget(const FileKey& file) override
    {
        m_called();
        m_data.files.erase(file.path());
        for (auto& [key, carried] : m_data.rows) {
            if (carried.carrier == file)
                carried.carrier.reset();
        }
    }
    void forgetAll() override
    {
        m_called();
        m_data.files.clear();
        for (auto& [key, carried] : m_data.rows)
            carried.carrier.reset();
    }

private:
    std::function<void()> m_called;
    Data m_data;
};

/// A LocalMirror for tests, which can fail, and "crash" by throwing, at any call.
class MemoryMirror final : public LocalMirror {
public:
    /// All that there is; a copy is a clone of the profile.
    struct Data {
        MemoryShelf<Record>::Data records;
        MemoryShelf<KeyValue>::Data keyValues;
        MirrorMemory memory;
    };

    [[nodiscard]] Data data() { return { m_records.data(), m_keyValues.data(), m_memory }; }
    void setData(const Data& data);
    [[nodiscard]] bool isOpen() const { return m_before.has_value(); }

    /// Asked at every call; may throw.
    std::function<void()> called;
    /// Asked at every commit: whether it fails.
    std::function<bool()> failsToCommit;

    LocalShelf<Record>& records() override { return m_records; }
    LocalShelf<KeyValue>& keyValues() override { return m_keyValues; }
    MirrorMemory memory() override;
    void setMemory(const MirrorMemory& memory) override;

protected:
    void begin() override;
    bool commit() override;
    void rollBack() noexcept override;

private:
    void call();

    MemoryShelf<Record> m_records { [this] { call(); } };
    MemoryShelf<KeyValue> m_keyValues { [this] { call(); } };
    MirrorMemory m_memory;
    std::optional<Data> m_before;
};

} // namespace mirror
