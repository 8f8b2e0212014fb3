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

    /// The revision is counted up at every change.
    MemoryShelf(Data& data, qint64& revision, std::function<void()> called)
        : m_data(data)
        , m_revision(revision)
        , m_called(std::move(called))
    {
    }

    void keepChanges()
    {
        m_rowsBefore.clear();
        m_filesBefore.clear();
    }
    void undoChanges()
    {
        restore(m_data.rows, m_rowsBefore);
        restore(m_data.files, m_filesBefore);
        keepChanges();
    }

    std::optional<Row> find(const Key& key) override
    {
        m_called();
        const auto found = m_data.rows.find(key);
        return found == m_data.rows.end() ? std::nullopt : std::optional(found->second.row);
    }
    void store(const Row& row) override
    {
        m_called();
        change(m_data.rows, m_rowsBefore, keyOf(row), Carried { row, std::nullopt });
    }
    void setCarrier(const Key& key, const FileKey& file) override
    {
        m_called();
        change(m_data.rows, m_rowsBefore, key, Carried { m_data.rows.at(key).row, file });
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
        change(m_data.files, m_filesBefore, file.key.path(), file);
    }
    void forget(const FileKey& file) override
    {
        m_called();
        change(m_data.files, m_filesBefore, file.path(), std::nullopt);
        for (const auto& [key, carried] : m_data.rows) {
            if (carried.carrier == file)
                change(m_data.rows, m_rowsBefore, key, Carried { carried.row, std::nullopt });
        }
    }
    void forgetAll() override
    {
        m_called();
        while (!m_data.files.empty())
            change(m_data.files, m_filesBefore, m_data.files.begin()->first, std::nullopt);
        for (const auto& [key, carried] : m_data.rows) {
            if (carried.carrier)
                change(m_data.rows, m_rowsBefore, key, Carried { carried.row, std::nullopt });
        }
    }

private:
    template <class Map>
    using Before = std::map<typename Map::key_type, std::optional<typename Map::mapped_type>>;

    /// Nothing takes the value away.
    template <class Map>
    void change(Map& map, Before<Map>& before, typename Map::key_type key,
        std::optional<typename Map::mapped_type> value)
    {
        ++m_revision;
        const auto found = map.find(key);
        const bool isThere = found != map.end();
        before.try_emplace(key, isThere ? std::optional(found->second) : std::nullopt);
        if (value)
            map.insert_or_assign(key, std::move(*value));
        else
            map.erase(key);
    }

    template <class Map> static void restore(Map& map, const Before<Map>& before)
    {
        for (const auto& [key, value] : before) {
            if (value)
                map.insert_or_assign(key, *value);
            else
                map.erase(key);
        }
    }

    Data& m_data;
    qint64& m_revision;
    std::function<void()> m_called;
    Before<decltype(Data::rows)> m_rowsBefore; // this transaction
    Before<decltype(Data::files)> m_filesBefore;
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

    [[nodiscard]] const Data& data() const { return m_data; }
    void setData(const Data& data);
    [[nodiscard]] bool isOpen() const { return m_memoryBefore.has_value(); }

    /// Asked at every call; may throw.
    std::function<void()> called;
    /// Asked at every commit: whether it fails.
    std::function<bool()> failsToCommit;

    LocalShelf<Record>& records() override { return m_records; }
    LocalShelf<KeyValue>& keyValues() override { return m_keyValues; }
    MirrorMemory memory() override;
    void setMemory(const MirrorMemory& memory) override;
    qint64 revision() override { return m_revision; }

protected:
    void begin() override;
    bool commit() override;
    void rollBack() noexcept override;

private:
    void call();

    Data m_data;
    qint64 m_revision = 0;
    MemoryShelf<Record> m_records { m_data.records, m_revision, [this] { call(); } };
    MemoryShelf<KeyValue> m_keyValues { m_data.keyValues, m_revision, [this] { call(); } };
    std::optional<MirrorMemory> m_memoryBefore; // within a transaction
};

} // namespace mirror
