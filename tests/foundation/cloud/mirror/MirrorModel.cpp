#include "MirrorModel.h"

#include "MirrorFixture.h"
#include "RecordLine.h"

#include <QCryptographicHash>

using namespace mirror;
using Operation = MemoryFileStore::Operation;
using Fault = MemoryFileStore::Fault;
using Kind = FileError::Kind;

namespace {

constexpr qint64 Minute = 60'000;
constexpr qint64 Hour = 60 * Minute;

struct Crash { };

const MirrorFolders& folders()
{
    static const MirrorFolders result { QStringLiteral("org.example.notes/") };
    return result;
}

QString nameIn(const QString& path) { return path.sliced(path.lastIndexOf(QLatin1Char('/')) + 1); }
QString folderOf(const QString& path) { return path.left(path.lastIndexOf(QLatin1Char('/')) + 1); }

bool isWhole(const QString& path, const QByteArray& bytes)
{
    const auto name = FileName::fromText(nameIn(path));
    return name && *name == FileName::of(name->content, bytes);
}

bool isEpoch(const QString& path)
{
    return path.startsWith(folders().zone()) && path != folders().zone()
        && Epoch::fromFolderName(path.sliced(folders().zone().size()).chopped(1));
}

void require(bool holds, const QString& claim)
{
    if (!holds)
        throw Violation { claim };
}

} // namespace

/// One installation: what it remembers, its clock, and the engine while the program runs.
class MirrorModel::Device {
public:
    Device(MirrorModel& model, int position)
        : m_model(model)
        , number(position)
    {
        MemoryMirror::Data data;
        data.memory.device = DeviceId(quint64(position) + 1);
        local.setData(data);
        local.called = [this] {
            if (crashIn > 0 && --crashIn == 0)
                throw Crash();
        };
        local.failsToCommit = [this] { return !m_model.m_isQuiet && m_model.happens(4); };
        restart();
    }

    void restart()
    {
        crashIn = 0;
        m_engine.reset();
        m_store = std::make_unique<MemoryFileStore>(m_model.m_files);
        m_store->setFaults([this](const auto& request) { return m_model.request(*this, request); });
        MirrorWorld world { *m_store, local, noteSchema(), [this] { return wall(); },
            [this] { return quint64(m_model.m_random()) << 32U | m_model.m_random(); } };
        MirrorSetup setup { folders(), QStringLiteral("someone"), "Kept by a program.\n",
            WriterId(quint64(m_model.m_random()) << 32U | m_model.m_random()),
            { .files = 4, .bytes = 2000, .inputs = 8 } };
        m_engine = std::make_unique<MirrorEngine>(std::move(world), std::move(setup));
    }

    /// Some are wrong, and the fourth runs backwards.
    [[nodiscard]] WallTime wall() const
    {
        const qint64 start = 1'763'690'400'000;
        const qint64 times[] { m_model.m_time, m_model.m_time + 5 * Minute,
            m_model.m_time - 2 * Hour, 2 * start - m_model.m_time };
        return WallTime(std::chrono::milliseconds(times[number % 4]));
    }

    /// Whether the sync ran to its end.
    bool sync()
    {
        if (isSyncing)
            return false;
        isSyncing = true;
        if (number % 2 == 1)
            m_store->setServerDate(QDateTime::fromMSecsSinceEpoch(m_model.m_time, Qt::UTC));
        wipesBefore = m_model.m_wipes;
        if (!m_model.m_isQuiet && m_model.happens(120))
            crashIn = 1 + int(m_model.below(150));
        bool isDone = false;
        try {
            isDone = m_engine->sync().result != SyncReport::Result::Failed;
        } catch (const Crash&) {
            restart();
        }
        crashIn = 0;
        isSyncing = false;
        return isDone;
    }

    [[nodiscard]] MirrorEngine& engine() { return *m_engine; }
    [[nodiscard]] MirrorPhase phase() { return local.data().memory.phase; }

    /// A change by the user, stamped.
    template <class Change> void change(Change make)
    {
        LocalTransaction writing(local);
        MirrorMemory memory = local.memory();
        HybridClock clock(memory.lastTime);
        const HybridTime time = clock.next(wall(), memory.clockOffset);
        make(time, memory.device);
        memory.lastTime = clock.last();
        local.setMemory(memory);
        static_cast<void>(writing.commit());
    }

private:
    MirrorModel& m_model;
    std::unique_ptr<MemoryFileStore> m_store;
    std::unique_ptr<MirrorEngine> m_engine;

public:
    const int number;
    MemoryMirror local;
    int crashIn = 0;
    int wipesBefore = 0;
    bool isSyncing = false;
    std::set<QUuid> seen;
    std::set<QUuid> dead;
};

MirrorModel::MirrorModel(quint32 seed)
    : m_random(seed)
    , m_files(std::make_shared<MemoryFiles>())
{
    const int count = 2 + int(below(3));
    for (int i = 0; i < count; ++i)
        m_devices.push_back(std::make_unique<Device>(*this, i));
    for (auto& device : m_devices) {
        if (happens(800))
            static_cast<void>(device->engine().switchOn());
    }
}

MirrorModel::~MirrorModel() = default;

quint32 MirrorModel::below(quint32 bound) { return quint32(m_random()) % bound; }

MirrorModel::Device& MirrorModel::anyDevice()
{
    return *m_devices.at(below(quint32(m_devices.size())));
}

void MirrorModel::act(int events)
{
    for (int i = 0; i < events; ++i) {
        happen();
        checkBeliefs();
        checkLife();
    }
}

void MirrorModel::happen()
{
    m_time += below(Minute);
    Device& device = anyDevice();
    const quint32 which = below(1000);
    if (which < 420)
        edit(device);
    else if (which < 900)
        device.sync();
    else if (which < 930)
        m_time += below(15 * Minute);
    else if (which < 945)
        wipe();
    else if (which < 955)
        cloneProfile();
    else if (which < 965 && !device.isSyncing)
        device.restart();
    else if (which < 975)
        static_cast<void>(device.engine().switchOff());
    else if (which < 996)
        static_cast<void>(device.phase() != MirrorPhase::Mirroring && device.engine().switchOn());
    else
        static_cast<void>(device.engine().deleteZone());
}

/// The user, or the server, loses files.
void MirrorModel::wipe()
{
    ++m_wipes;
    const QString root = happens(300) ? folders().zone() : QString();
    for (const QString& path : m_files->files.keys()) {
        const bool isLost = root.isEmpty() ? happens(200) : true;
        if (isLost && path.endsWith(QStringLiteral(".jsonl")))
            m_files->files.remove(path);
    }
    const auto collections = m_files->collections;
    for (const QString& path : collections) {
        if (isEpoch(path) && (!root.isEmpty() || happens(300))) {
            for (const QString& file : m_files->files.keys()) {
                if (file.startsWith(path))
                    m_files->files.remove(file);
            }
            m_files->collections.erase(path);
            m_missingSince[path] = m_time;
        }
    }
}

void MirrorModel::cloneProfile()
{
    Device& from = anyDevice();
    Device& to = anyDevice();
    if (&from == &to || from.isSyncing || to.isSyncing)
        return;
    // What a profile held that is overwritten is lost with it, as on a disk that breaks: the rows
    // that no other device has, too. So the clone keeps them.
    MemoryMirror::Data data = from.local.data();
    for (const auto& [id, carried] : to.local.data().records.rows) {
        auto [mine, isNew] = data.records.rows.try_emplace(
            id, MemoryShelf<Record>::Carried { carried.row, std::nullopt });
        if (isNew || mine->second.row == carried.row)
            continue;
        mine->second = { { id, join(mine->second.row.state, carried.row.state) }, std::nullopt };
    }
    data.memory.lastTime = std::max(data.memory.lastTime, to.local.data().memory.lastTime);
    data.memory.missingListings = 0; // told by another clock, see setDevice()
    to.local.setData(data);
    to.restart();
    if (happens(500)) // otherwise both go on with one identity
        static_cast<void>(to.engine().setDevice(DeviceId(m_random())));
}

void MirrorModel::edit(Device& device)
{
    LocalShelf<Record>& shelf = device.local.records();
    std::vector<QUuid> live;
    for (const auto& [id, carried] : device.local.data().records.rows) {
        if (std::holds_alternative<LiveRecord>(carried.row.state))
            live.push_back(id);
    }
    const quint32 which = below(10);
    const QUuid id = live.empty() ? QUuid() : live.at(below(quint32(live.size())));
    const Text text = Text::of(QString::number(below(1000)));
    if (which == 0) {
        device.change([&](HybridTime time, DeviceId from) {
            const Text key = Text::of(below(2) == 0 ? u"a" : u"b");
            device.local.keyValues().store({ key, { time, from, text, {} } });
        });
    } else if (live.empty() || (which < 5 && live.size() < 25)) {
        const QUuid made = identity(++m_bills);
        device.change([&](HybridTime time, DeviceId from) {
            const Attributes attributes = attributesOf({ .count = qint32(m_bills) });
            shelf.store({ made, LiveRecord { { time, attributes }, { time, from, text }, {} } });
        });
    } else if (which < 9) {
        device.change([&](HybridTime time, DeviceId from) {
            auto record = *shelf.find(id);
            auto& state = std::get<LiveRecord>(record.state);
            const Renaming before = std::exchange(state.renaming, { time, from, text });
            require(before < state.renaming,
                QStringLiteral("A renaming is later than what it renames."));
            shelf.store(record);
        });
    } else {
        device.change([&](HybridTime time, DeviceId) {
            shelf.store({ id, DeadRecord { time, {} } });
        });
    }
}

std::optional<Fault> MirrorModel::request(Device& device, const MemoryFileStore::Request& request)
{
    require(!device.local.isOpen(), QStringLiteral("No transaction waits for a server."));
    learnFiles();
    checkBeliefs();
    if (m_isQuiet) {
        if (request.operation == Operation::MakeCollection && isEpoch(request.path))
            checkCreation(device);
        return std::nullopt;
    }
    m_time += below(3000);
    if (happens(60))
        edit(device);
    if (m_depth == 0 && happens(80)) {
        ++m_depth;
        happen();
        --m_depth;
        learnFiles();
    }
    if (device.crashIn > 0 && happens(20))
        throw Crash();
    std::optional<Fault> fault;
    if (happens(70))
        fault = randomFault(request);
    if (request.operation == Operation::Remove && !request.path.endsWith(QLatin1Char('/'))
        && device.wipesBefore == m_wipes)
        checkRemoval(request.path);
    if (request.operation == Operation::MakeCollection && isEpoch(request.path))
        checkCreation(device);
    return fault;
}

Fault MirrorModel::randomFault(const MemoryFileStore::Request& request)
{
    const Kind kinds[] { Kind::Network, Kind::Server, Kind::Busy, Kind::Locked, Kind::TooLarge,
        Kind::NotUnderstood, Kind::Redirect };
    Fault fault { Fault::When(below(3)), qsizetype(below(400)),
        FileError { kinds[below(std::size(kinds))], 0, std::nullopt, QStringLiteral("A fault.") } };
    // A listing that is not whole is no listing; anything else may be called a success.
    if (request.operation != Operation::List && happens(300))
        fault.error.reset();
    if (request.operation == Operation::Put && !fault.error
        && fault.when != Fault::When::Afterwards)
        m_doubtful.insert(nameIn(request.path));
    return fault;
}

void MirrorModel::learnFiles()
{
    for (auto each = m_files->files.cbegin(); each != m_files->files.cend(); ++each) {
        const QString name = nameIn(each.key());
        if (m_contents.contains(name) || !isWhole(each.key(), each.value()))
            continue;
        States& states = m_contents[name];
        for (const Record& record : readRecords(each.value(), noteSchema()).records)
            states.insert_or_assign(record.id, record.state);
    }
}

/// What a device deletes is told by the other files.
void MirrorModel::checkRemoval(const Path& path)
{
    const auto file = m_files->files.constFind(path);
    if (file == m_files->files.cend() || !isWhole(path, *file)
        || !path.startsWith(folders().zone()))
        return;
    States told;
    for (auto each = m_files->files.cbegin(); each != m_files->files.cend(); ++each) {
        if (each.key() == path || folderOf(each.key()) != folderOf(path)
            || !isWhole(each.key(), each.value()))
            continue;
        for (const auto& [id, state] : m_contents.at(nameIn(each.key()))) {
            const auto [known, isNew] = told.try_emplace(id, state);
            known->second = join(known->second, state);
        }
    }
    for (const auto& [id, state] : m_contents.at(nameIn(path)))
        require(told.contains(id) && join(told.at(id), state) == told.at(id),
            QStringLiteral("What a deleted file says stands in others."));
}

void MirrorModel::checkCreation(Device& device)
{
    const auto epoch = device.local.data().memory.epoch;
    if (device.phase() != MirrorPhase::Mirroring || !epoch)
        return;
    const auto missing = m_missingSince.find(folders().epoch(*epoch));
    require(missing != m_missingSince.end() && m_time - missing->second >= 10 * Minute,
        QStringLiteral("A missing folder is not made again at once."));
}

/// A carrier is a file that was seen whole, and said exactly this.
void MirrorModel::checkBeliefs()
{
    for (auto& device : m_devices) {
        if (device->local.isOpen())
            continue;
        for (const auto& [id, carried] : device->local.data().records.rows) {
            if (!carried.carrier)
                continue;
            const QString& name = carried.carrier->name;
            if (!m_contents.contains(name))
                learnFiles();
            const auto known = m_contents.find(name);
            require(known != m_contents.end() || m_doubtful.contains(name),
                QStringLiteral("A carrier was there."));
            if (known != m_contents.end())
                require(known->second.contains(id) && known->second.at(id) == carried.row.state,
                    QStringLiteral("A carrier holds exactly the state that it carries."));
        }
    }
}

/// No row is ever lost, and none comes back.
void MirrorModel::checkLife()
{
    for (auto& device : m_devices) {
        const auto& rows = device->local.data().records.rows;
        for (const auto& [id, carried] : rows) {
            device->seen.insert(id);
            if (std::holds_alternative<DeadRecord>(carried.row.state)) {
                device->dead.insert(id);
                m_deleted.insert(id);
            } else {
                require(!device->dead.contains(id), QStringLiteral("No deleted bill comes back."));
            }
        }
        for (const QUuid& id : device->seen)
            require(rows.contains(id), QStringLiteral("No row is lost."));
    }
}

/// All that could change.
QString MirrorModel::picture()
{
    QString result;
    for (auto& device : m_devices) {
        const MemoryMirror::Data& data = device->local.data();
        for (const auto& [id, carried] : data.records.rows)
            result += QString::fromUtf8(recordLine(carried.row))
                + (carried.carrier ? carried.carrier->path() : QString());
        for (const auto& [key, carried] : data.keyValues.rows)
            result += QString::fromUtf8(keyValueLine(carried.row))
                + (carried.carrier ? carried.carrier->path() : QString());
        result += QString::number(int(data.memory.phase));
    }
    for (auto file = m_files->files.cbegin(); file != m_files->files.cend(); ++file)
        result += file.key() + QString::number(file->size());
    return result;
}

void MirrorModel::settleOnce()
{
    QString before;
    int unchanged = 0;
    for (int round = 0; unchanged < 12; ++round) {
        require(round < 80, QStringLiteral("Devices that are left alone come to rest."));
        m_time += 3 * Minute;
        for (auto& device : m_devices)
            device->sync();
        learnFiles();
        checkBeliefs();
        checkLife();
        const QString now = picture();
        unchanged = now == before ? unchanged + 1 : 0;
        before = now;
    }
}

void MirrorModel::settle()
{
    m_isQuiet = true;
    settleOnce();
    checkEqual("at rest");
    for (auto& device : m_devices) {
        if (device->phase() != MirrorPhase::Mirroring)
            require(device->engine().switchOn(), QStringLiteral("Mirroring is switched on."));
    }
    settleOnce();
    checkEqual("with all switched on");
    m_devices.push_back(std::make_unique<Device>(*this, int(m_devices.size())));
    require(m_devices.back()->engine().switchOn(), QStringLiteral("Mirroring is switched on."));
    settleOnce();
    checkEqual("with a new device");
    checkCloud();
    checkBills();
}

void MirrorModel::checkEqual(const char* when)
{
    Device* first = nullptr;
    for (auto& device : m_devices) {
        if (device->phase() != MirrorPhase::Mirroring
            || (first == nullptr && device->number % 4 == 3))
            continue;
        if (device->local.data().memory.missingListings > 0)
            continue; // its clock runs backwards, and never shows that ten minutes are over
        if (first == nullptr)
            first = device.get();
        const auto& mine = device->local.data();
        const auto& other = first->local.data();
        const auto sameRows = [](const auto& a, const auto& b) {
            return std::ranges::equal(a, b, [](const auto& left, const auto& right) {
                return left.first == right.first && left.second.row == right.second.row;
            });
        };
        require(sameRows(mine.records.rows, other.records.rows),
            QStringLiteral("Devices agree on the bills %1.").arg(QLatin1String(when)));
        require(sameRows(mine.keyValues.rows, other.keyValues.rows),
            QStringLiteral("Devices agree on the values %1.").arg(QLatin1String(when)));
    }
}

/// What every device believes to be in the cloud is there, and that is everything.
void MirrorModel::checkCloud()
{
    for (auto& device : m_devices) {
        for (const auto& [id, carried] : device->local.data().records.rows) {
            require(
                carried.carrier.has_value(), QStringLiteral("Every bill is published at rest."));
            const QString path = carried.carrier->path();
            const auto file = m_files->files.constFind(path);
            require(file != m_files->files.cend() && isWhole(path, *file),
                QStringLiteral("Every carrier is there at rest."));
        }
    }
}

void MirrorModel::checkBills()
{
    for (auto& device : m_devices) {
        const auto& rows = device->local.data().records.rows;
        for (quint32 number = 1; number <= m_bills; ++number) {
            const auto row = rows.find(identity(number));
            const bool wasMade = std::ranges::any_of(
                m_devices, [&](const auto& each) { return each->seen.contains(identity(number)); });
            if (!wasMade)
                continue; // its transaction failed
            require(row != rows.end(), QStringLiteral("Every bill is on every device."));
            require(std::holds_alternative<DeadRecord>(row->second.row.state)
                    == m_deleted.contains(identity(number)),
                QStringLiteral("A bill lives exactly where it was not deleted."));
        }
    }
}
