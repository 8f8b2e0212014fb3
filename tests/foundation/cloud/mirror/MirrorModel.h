#pragma once

#include "MemoryFileStore.h"
#include "MemoryMirror.h"
#include "MirrorEngine.h"

#include <random>

/// A claim about the mirror that does not hold, in words.
struct Violation {
    QString claim;
};

/// Several devices and one folder, on which things happen at random, and go wrong at random.
/// Functions throw a Violation.
class MirrorModel {
public:
    explicit MirrorModel(quint32 seed);
    ~MirrorModel();

    /// So many random events, with faults.
    void act(int events);
    /// Without faults, until nothing changes any more; then all that must hold is checked.
    void settle();

private:
    class Device;
    friend class Device;
    using Path = QString;
    using States = std::map<QUuid, mirror::RecordState>;

    [[nodiscard]] quint32 below(quint32 bound);
    [[nodiscard]] bool happens(quint32 perMille) { return below(1000) < perMille; }
    Device& anyDevice();
    void happen();
    void wipe();
    void cloneProfile();
    void edit(Device& device);
    std::optional<mirror::MemoryFileStore::Fault> request(
        Device& device, const mirror::MemoryFileStore::Request& request);
    mirror::MemoryFileStore::Fault randomFault(const mirror::MemoryFileStore::Request& request);
    void learnFiles();
    void checkRemoval(const Path& path);
    void checkCreation(Device& device);
    void checkBeliefs();
    void checkLife();
    void settleOnce();
    [[nodiscard]] QString picture();
    void checkEqual(const char* when);
    void checkCloud();
    void checkBills();

    std::mt19937 m_random;
    std::shared_ptr<mirror::MemoryFiles> m_files;
    qint64 m_time = 1'763'690'400'000; // true, in milliseconds
    std::vector<std::unique_ptr<Device>> m_devices;
    std::map<QString, States> m_contents; // by file name: what files that were whole said
    std::set<QString> m_doubtful; // names of which a broken upload was called a success
    std::set<QUuid> m_deleted;
    std::map<Path, qint64> m_missingSince; // epoch folders that were wiped, and when
    quint32 m_bills = 0;
    int m_wipes = 0;
    int m_depth = 0; // of devices that act within another one's request
    bool m_isQuiet = false;
};
