#pragma once

#include "MemoryMirror.h"
#include "MirrorEngine.h"
#include "ModelCloud.h"

/// What all devices of a model live in.
struct ModelWorld {
    explicit ModelWorld(quint32 seed)
        : chance(seed)
    {
    }

    Chance chance;
    ModelCloud cloud;
    qint64 time = 1'763'690'400'000; ///< true, in milliseconds
    bool isQuiet = false; ///< nothing goes wrong any more
};

/// One installation: what it remembers, its clock, and the engine while the program runs.
class ModelDevice {
public:
    using Asked = std::function<std::optional<mirror::MemoryFileStore::Fault>(
        ModelDevice&, const mirror::MemoryFileStore::Request&)>;
    using Change = std::function<void(mirror::HybridTime, mirror::DeviceId)>;

    /// Asked is called before each request.
    ModelDevice(ModelWorld& world, int number, Asked asked);
    ModelDevice(const ModelDevice&) = delete;
    ModelDevice& operator=(const ModelDevice&) = delete;
    ~ModelDevice() = default;

    [[nodiscard]] int number() const { return m_number; }
    /// Whether its clock shows that time passes.
    [[nodiscard]] bool hasClockThatRuns() const { return m_number % 4 != 3; }
    [[nodiscard]] const mirror::MemoryMirror::Data& data() const { return m_local.data(); }
    /// Another one after every change of the data.
    [[nodiscard]] qint64 revision() { return m_local.revision(); }
    [[nodiscard]] mirror::MirrorPhase phase() const { return data().memory.phase; }
    [[nodiscard]] bool isInTransaction() const { return m_local.isOpen(); }
    [[nodiscard]] bool isSyncing() const { return m_isSyncing; }
    /// Whether files were wiped since its sync began.
    [[nodiscard]] bool sawWipe() const { return m_wipesBefore != m_world.cloud.wipes(); }

    [[nodiscard]] mirror::MemoryMirror& local() { return m_local; }

    // What the user decides, at any moment.

    void switchOn();
    void switchOff();
    void deleteZone();
    /// Whether the last decision was to mirror.
    [[nodiscard]] bool isSwitchedOn() const { return m_isSwitchedOn; }

    void sync();
    /// The phase in which its sync began.
    [[nodiscard]] mirror::MirrorPhase phaseBefore() const { return m_phaseBefore; }
    void restart();
    /// Becomes a copy of the other one.
    void become(const ModelDevice& other);
    /// A change by the user, stamped.
    void change(const Change& make);
    /// Where a crash is near, it comes now, by chance.
    void crashPerhaps();

private:
    struct Crash { };

    [[nodiscard]] mirror::WallTime wall() const;

    ModelWorld& m_world;
    const int m_number;
    Asked m_asked;
    mirror::MemoryMirror m_local;
    std::unique_ptr<mirror::MemoryFileStore> m_store;
    std::unique_ptr<mirror::MirrorEngine> m_engine;
    int m_crashIn = 0; // calls
    int m_wipesBefore = 0;
    mirror::MirrorPhase m_phaseBefore = mirror::MirrorPhase::Off;
    bool m_isSyncing = false;
    bool m_isSwitchedOn = false;
};
