#pragma once

#include <QHash>
#include <QString>
#include <QVariant>

#include <condition_variable>
#include <mutex>
#include <thread>

/// The user's key-value store: typed reads that never fail, writes that never wait.
///
/// A write is visible to every reader of this object at once. A thread of the store's own carries
/// it to the file, at most once in writeInterval, so that neither a key stroke nor a dragged
/// slider pays for the disk. The file is replaced as a whole: a crash leaves the old one or the
/// new one. Only keys that were written here are touched in it.
///
/// Reads and writes belong to one thread.
class UserDefaults {
public:
    /// The user's own store, in the configuration folder. Lives as long as the process.
    static UserDefaults& standard();
    /// The file that standard() keeps them in. Its folder is the one for what else the user sets.
    [[nodiscard]] static QString standardFile();

    /// A store on an INI file, which need not exist yet. One that has damaged lines is kept beside
    /// itself with ".damaged" at its end, and what could be read of it is written anew; one that
    /// may not be read counts as empty. A diagnostic line says either.
    explicit UserDefaults(const QString& file);

    /// Carries what is still waiting to the file, like synchronize().
    ~UserDefaults();

    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;

    /// False where the key is missing or holds no boolean.
    [[nodiscard]] bool boolForKey(const QString& key) const;
    /// 0 where the key is missing or holds no whole number of 64 bits.
    [[nodiscard]] qint64 integerForKey(const QString& key) const;
    /// 0.0 where the key is missing or holds no number.
    [[nodiscard]] double doubleForKey(const QString& key) const;
    [[nodiscard]] bool contains(const QString& key) const;
    /// In no order.
    [[nodiscard]] QStringList keys() const { return m_values.keys(); }

    void setValue(const QString& key, const QVariant& value);
    void removeValue(const QString& key);

    /// Returns when everything written so far is in the file, or could not be written (which a
    /// diagnostic line then says; the values wait for the next write).
    void synchronize();

private:
    enum class Demand { None, Flush, Stop };

    void repairFile() const;
    void enqueue(const QString& key, const QVariant& value);
    void writeUntilStopped();
    void writeBatch(std::unique_lock<std::mutex>& lock);

    const QString m_file;
    QHash<QString, QVariant> m_values;

    std::mutex m_mutex; // guards everything below
    std::condition_variable m_wake;
    std::condition_variable m_attemptEnded;
    QHash<QString, QVariant> m_pending; // an invalid value removes its key
    bool m_changedSinceAttempt = false;
    Demand m_demand = Demand::None;
    quint64 m_attemptsBegun = 0;
    quint64 m_attemptsEnded = 0;
    std::thread m_writer; // started by the first write
};
