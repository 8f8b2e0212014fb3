#pragma once

#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

/// A file system in memory, for SQLite, that can lose power and refuse writes.
///
/// What was written is only certain to survive a power cut once it was synced; of the rest each
/// write survives whole, in part, or not at all, independently of the others. Handles opened before
/// a cut only answer errors after it.
class FaultyVfs {
public:
    struct Write {
        std::size_t offset;
        std::string bytes;
        bool isTruncation;
    };

    struct ShmLock {
        int shared = 0;
        bool isExclusive = false;
    };

    struct File {
        std::string content;
        std::string durable;
        std::vector<Write> unsynced;
        int sharedLocks = 0;
        const void* reserved = nullptr; // the handle that has the lock
        const void* exclusive = nullptr;
        std::vector<std::unique_ptr<char[]>> shm;
        ShmLock shmLocks[8];
        int shmUsers = 0;
    };

    /// Makes it the file system of every database that is opened from now on.
    static FaultyVfs& install();

    /// Forgets every file. None may be open.
    void wipe() { m_files.clear(); }

    /// From the count-th write, truncation or sync from now on (1 is the next), each one fails with
    /// the code; until allowWrites() is called.
    void refuseWritesFrom(int count, int code);
    void allowWrites() { m_refusedFrom = 0; }
    /// Whether a write was refused since refuseWritesFrom().
    [[nodiscard]] bool hasRefused() const { return m_hasRefused; }
    /// The power fails at the count-th write, truncation or sync from now on.
    void cutPowerAt(int count, unsigned seed);
    [[nodiscard]] bool isPowerCut() const { return m_isPowerCut; }
    /// Power returns: files are as the cut left them.
    void restorePower();

    // For the functions that SQLite calls.
    [[nodiscard]] std::shared_ptr<File> find(const std::string& name, bool create);
    void remove(const std::string& name) { m_files.erase(name); }
    [[nodiscard]] int beforeWrite();
    [[nodiscard]] unsigned generation() const { return m_generation; }

private:
    void cutPower();

    std::map<std::string, std::shared_ptr<File>> m_files;
    int m_writes = 0;
    int m_refusedFrom = 0;
    int m_refusalCode = 0;
    bool m_hasRefused = false;
    int m_cutAt = 0;
    bool m_isPowerCut = false;
    unsigned m_generation = 0;
    std::mt19937 m_random;
};
