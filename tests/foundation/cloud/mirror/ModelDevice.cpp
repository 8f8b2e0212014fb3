#include "ModelDevice.h"

#include "MirrorFixture.h"

using namespace mirror;

namespace {

constexpr qint64 Minute = 60'000;
constexpr qint64 Hour = 60 * Minute;

} // namespace

ModelDevice::ModelDevice(ModelWorld& world, int number, Asked asked)
    : m_world(world)
    , m_number(number)
    , m_asked(std::move(asked))
{
    MemoryMirror::Data data;
    data.memory.device = DeviceId(quint64(number) + 1);
    m_local.setData(data);
    m_local.called = [this] {
        if (m_crashIn > 0 && --m_crashIn == 0)
            throw Crash();
    };
    m_local.failsToCommit = [this] { return !m_world.isQuiet && m_world.chance.happens(4); };
    restart();
}

void ModelDevice::restart()
{
    m_crashIn = 0;
    m_engine.reset();
    m_store = std::make_unique<MemoryFileStore>(m_world.cloud.files());
    m_store->setFaults([this](const auto& request) { return m_asked(*this, request); });
    MirrorWorld world { *m_store, m_local, noteSchema(), [this] { return wall(); },
        [this] { return m_world.chance.bits(); } };
    MirrorSetup setup { modelFolders(), QStringLiteral("someone"), "Kept by a program.\n",
        WriterId(m_world.chance.bits()), { .files = 4, .bytes = 2000, .inputs = 8 } };
    m_engine = std::make_unique<MirrorEngine>(std::move(world), std::move(setup));
}

/// Some are wrong, and the fourth runs backwards.
WallTime ModelDevice::wall() const
{
    const qint64 start = 1'763'690'400'000;
    const qint64 times[] { m_world.time, m_world.time + 5 * Minute, m_world.time - 2 * Hour,
        2 * start - m_world.time };
    return WallTime(std::chrono::milliseconds(times[m_number % 4]));
}

void ModelDevice::switchOn() { m_isSwitchedOn = m_engine->switchOn() || m_isSwitchedOn; }

void ModelDevice::switchOff() { m_isSwitchedOn = !m_engine->switchOff() && m_isSwitchedOn; }

void ModelDevice::deleteZone() { m_isSwitchedOn = !m_engine->deleteZone() && m_isSwitchedOn; }

void ModelDevice::sync()
{
    if (m_isSyncing)
        return;
    m_isSyncing = true;
    m_phaseBefore = phase();
    if (m_number % 2 == 1)
        m_store->setServerDate(QDateTime::fromMSecsSinceEpoch(m_world.time, Qt::UTC));
    m_wipesBefore = m_world.cloud.wipes();
    if (!m_world.isQuiet && m_world.chance.happens(120))
        m_crashIn = 1 + int(m_world.chance.below(150));
    try {
        m_engine->sync();
    } catch (const Crash&) {
        restart();
    }
    m_crashIn = 0;
    m_isSyncing = false;
}

void ModelDevice::crashPerhaps()
{
    if (m_crashIn > 0 && m_world.chance.happens(20))
        throw Crash();
}

void ModelDevice::become(const ModelDevice& other)
{
    // What a profile held that is overwritten is lost with it, as on a disk that breaks: the rows
    // that no other device has, too. So the clone keeps them.
    MemoryMirror::Data copy = other.data();
    for (const auto& [id, carried] : data().records.rows) {
        auto [mine, isNew] = copy.records.rows.try_emplace(
            id, MemoryShelf<Record>::Carried { carried.row, std::nullopt });
        if (isNew || mine->second.row == carried.row)
            continue;
        mine->second = { { id, join(mine->second.row.state, carried.row.state) }, std::nullopt };
    }
    copy.memory.lastTime = std::max(copy.memory.lastTime, data().memory.lastTime);
    copy.memory.missingListings = 0; // told by another clock, see setDevice()
    m_local.setData(copy);
    m_isSwitchedOn = other.m_isSwitchedOn;
    restart();
    if (m_world.chance.happens(500)) // otherwise both go on with one identity
        static_cast<void>(m_engine->setDevice(DeviceId(m_world.chance.bits())));
}

void ModelDevice::change(const Change& make)
{
    LocalTransaction writing(m_local);
    MirrorMemory memory = m_local.memory();
    HybridClock clock(memory.lastTime);
    const HybridTime time = clock.next(wall(), memory.clockOffset);
    make(time, memory.device);
    memory.lastTime = clock.last();
    m_local.setMemory(memory);
    static_cast<void>(writing.commit()); // a change that failed was never made
}
