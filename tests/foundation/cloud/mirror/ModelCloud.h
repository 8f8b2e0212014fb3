#pragma once

#include "MemoryFileStore.h"
#include "MirrorSetup.h"
#include "RowFormat.h"

#include <map>
#include <random>

/// What happens by chance, the same for the same seed.
class Chance {
public:
    explicit Chance(quint32 seed)
        : m_random(seed)
    {
    }

    [[nodiscard]] quint32 below(quint32 bound) { return quint32(m_random()) % bound; }
    [[nodiscard]] bool happens(quint32 perMille) { return below(1000) < perMille; }
    [[nodiscard]] quint64 bits() { return quint64(m_random()) << 32U | m_random(); }

private:
    std::mt19937 m_random;
};

[[nodiscard]] const mirror::MirrorFolders& modelFolders();

/// The path of an epoch's folder, and of a folder of small values, end in a slash.
[[nodiscard]] QString folderOf(const QString& path);

/// The server of a model, seen from above: what files of rows that were ever whole said, where they
/// stand now, and what was lost through no fault of a device.
class ModelCloud {
public:
    template <class Row> using Key = typename mirror::LocalShelf<Row>::Key;
    template <class Row> using Rows = std::map<Key<Row>, Row>;

    [[nodiscard]] const std::shared_ptr<mirror::MemoryFiles>& files() const { return m_files; }

    /// Looks at what changed. To be called before anything is asked.
    void learn(qint64 time);
    /// Another one after every change that was learnt.
    [[nodiscard]] qint64 revision() const { return m_revision; }

    /// What the files of that name say; null where none was ever whole.
    template <class Row> [[nodiscard]] const Rows<Row>* contents(const QString& name) const;
    [[nodiscard]] bool isWhole(const QString& path) const;
    /// What the whole files of the folder say together, one of them perhaps left out.
    template <class Row>
    [[nodiscard]] Rows<Row> told(const QString& folder, const QString& without = {}) const;

    [[nodiscard]] bool isThere(const QString& collection) const
    {
        return m_files->hasCollection(collection);
    }
    /// Whether the epoch of that folder was deleted on purpose, and the marker is still there.
    [[nodiscard]] bool isClosed(const QString& epochFolder) const;
    [[nodiscard]] bool isAnyEpochOpen() const;
    /// Since when the epoch's folder is missing without a marker.
    [[nodiscard]] std::optional<qint64> missingSince(const QString& epochFolder) const;
    /// All that could change, in words.
    [[nodiscard]] QString picture() const;

    /// The user, or the server, loses files and folders.
    void wipe(Chance& chance);
    [[nodiscard]] int wipes() const { return m_wipes; }

    /// A file is, or may be, broken by the request that is just made.
    void expectLoss() { m_isLossExpected = true; }
    /// Whether something may have been lost since the last call.
    [[nodiscard]] bool takeLoss() { return std::exchange(m_isLossExpected, false); }

private:
    struct Known {
        QByteArray bytes; // keeps its memory, which tells a file that was written again
        bool isWhole = false;
    };

    void learnEpochs(qint64 time);
    void learnFile(const QString& path, const QByteArray& bytes);
    void removeFolder(const QString& folder);
    void wipeFiles(Chance& chance, quint32 perMille);
    void wipeEpochs(Chance& chance);

    std::shared_ptr<mirror::MemoryFiles> m_files = std::make_shared<mirror::MemoryFiles>();
    std::map<QString, Known> m_known; // by path
    std::map<QString, Rows<mirror::Record>> m_records; // by file name
    std::map<QString, Rows<mirror::KeyValue>> m_keyValues;
    std::map<QString, std::optional<qint64>> m_epochs; // by folder: since when it is missing
    qint64 m_revision = 0;
    int m_wipes = 0;
    bool m_isLossExpected = false;
};
