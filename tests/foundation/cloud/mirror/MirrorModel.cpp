#include "MirrorModel.h"

#include "MirrorFixture.h"
#include "RecordLine.h"

#include <QScopeGuard>

using namespace mirror;
using Operation = MemoryFileStore::Operation;
using Kind = FileError::Kind;

namespace {

constexpr qint64 Minute = 60'000;
constexpr std::size_t MostBills = 25; // that live on a device

template <class Row> QString carrierOf(const typename MemoryShelf<Row>::Carried& carried)
{
    return carried.carrier ? carried.carrier->path() : QString();
}

QString pictureOf(const ModelDevice& device)
{
    QString result = QString::number(int(device.phase()));
    for (const auto& [id, carried] : device.data().records.rows)
        result += QString::fromUtf8(recordLine(carried.row)) + carrierOf<Record>(carried);
    for (const auto& [key, carried] : device.data().keyValues.rows)
        result += QString::fromUtf8(keyValueLine(carried.row)) + carrierOf<KeyValue>(carried);
    return result;
}

} // namespace

MirrorModel::MirrorModel(quint32 seed)
    : m_world(seed)
    , m_claims(m_world, m_devices)
{
    const quint32 count = 2 + m_world.chance.below(3);
    while (m_devices.size() < count)
        addDevice();
    for (auto& device : m_devices) {
        if (m_world.chance.happens(800))
            device->switchOn();
    }
}

MirrorModel::~MirrorModel() = default;

void MirrorModel::addDevice()
{
    m_devices.push_back(std::make_unique<ModelDevice>(m_world, int(m_devices.size()),
        [this](ModelDevice& device, const Request& asked) { return request(device, asked); }));
}

ModelDevice& MirrorModel::anyDevice()
{
    return *m_devices.at(m_world.chance.below(quint32(m_devices.size())));
}

void MirrorModel::act(int events)
{
    for (int i = 0; i < events; ++i) {
        happen();
        m_claims.checkBeliefs();
        m_claims.checkLife();
    }
}

void MirrorModel::happen()
{
    Chance& chance = m_world.chance;
    m_world.time += chance.below(Minute);
    ModelDevice& device = anyDevice();
    const quint32 which = chance.below(1000);
    if (which < 420)
        edit(device);
    else if (which < 900)
        device.sync();
    else if (which < 930)
        m_world.time += chance.below(15 * Minute);
    else if (which < 945)
        m_world.cloud.wipe(chance);
    else if (which < 955)
        cloneProfile();
    else if (which < 965 && !device.isSyncing())
        device.restart();
    else if (which < 972)
        device.switchOff();
    else if (which < 992)
        device.switchOn();
    else
        deleteZone(device);
}

void MirrorModel::cloneProfile()
{
    ModelDevice& from = anyDevice();
    ModelDevice& to = anyDevice();
    if (&from != &to && !from.isSyncing() && !to.isSyncing())
        to.become(from);
}

/// Half of the users regret it soon.
void MirrorModel::deleteZone(ModelDevice& device)
{
    device.deleteZone();
    if (m_world.chance.happens(250))
        device.sync();
    if (m_world.chance.happens(500))
        device.switchOn();
}

void MirrorModel::edit(ModelDevice& device)
{
    std::vector<QUuid> live;
    for (const auto& [id, carried] : device.data().records.rows) {
        if (std::holds_alternative<LiveRecord>(carried.row.state))
            live.push_back(id);
    }
    const quint32 which = m_world.chance.below(10);
    if (which == 0)
        setValue(device);
    else if (live.empty() || (which < 5 && live.size() < MostBills))
        makeBill(device);
    else if (which < 9)
        rename(device, live.at(m_world.chance.below(quint32(live.size()))));
    else
        deleteBill(device, live.at(m_world.chance.below(quint32(live.size()))));
}

void MirrorModel::setValue(ModelDevice& device)
{
    const Text key = Text::of(m_world.chance.below(2) == 0 ? u"a" : u"b");
    const Text value = Text::of(QString::number(m_world.chance.below(1000)));
    device.change([&](HybridTime time, DeviceId from) {
        device.local().keyValues().store({ key, { time, from, value, {} } });
    });
}

void MirrorModel::makeBill(ModelDevice& device)
{
    const QUuid id = identity(++m_bills);
    const Attributes attributes = attributesOf({ .count = qint32(m_bills) });
    device.change([&](HybridTime time, DeviceId from) {
        device.local().records().store(
            { id, LiveRecord { { time, attributes }, { time, from, std::nullopt }, {} } });
    });
}

void MirrorModel::rename(ModelDevice& device, const QUuid& id)
{
    const Text text = Text::of(QString::number(m_world.chance.below(1000)));
    device.change([&](HybridTime time, DeviceId from) {
        Record record = *device.local().records().find(id);
        auto& state = std::get<LiveRecord>(record.state);
        const Renaming before = std::exchange(state.renaming, { time, from, text });
        require(before < state.renaming, "A renaming is later than what it renames.");
        device.local().records().store(record);
    });
}

void MirrorModel::deleteBill(ModelDevice& device, const QUuid& id)
{
    device.change([&](HybridTime time, DeviceId) {
        device.local().records().store({ id, DeadRecord { time, {} } });
    });
}

/// Between any two requests of a device its user, and other devices, may act.
std::optional<MirrorModel::Fault> MirrorModel::request(ModelDevice& device, const Request& request)
{
    require(!device.isInTransaction(), "No transaction waits for a server.");
    m_claims.checkBeliefs();
    if (m_world.isQuiet) {
        checkRequest(device, request);
        return std::nullopt;
    }
    Chance& chance = m_world.chance;
    m_world.time += chance.below(3000);
    if (chance.happens(60))
        edit(device);
    if (m_depth == 0 && chance.happens(80)) {
        ++m_depth;
        const auto done = qScopeGuard([this] { --m_depth; }); // a crash may end it, too
        happen();
        m_claims.checkBeliefs();
    }
    device.crashPerhaps();
    checkRequest(device, request);
    return randomFault(request);
}

void MirrorModel::checkRequest(const ModelDevice& device, const Request& request)
{
    if (request.operation == Operation::Remove)
        m_claims.checkRemoval(device, request.path);
    if (request.operation == Operation::MakeCollection
        && request.path.contains(QStringLiteral("/e-")))
        m_claims.checkCreation(device);
}

std::optional<MirrorModel::Fault> MirrorModel::randomFault(const Request& request)
{
    Chance& chance = m_world.chance;
    if (!chance.happens(70))
        return std::nullopt;
    const Kind kinds[] { Kind::Network, Kind::Server, Kind::Busy, Kind::Locked, Kind::TooLarge,
        Kind::NotUnderstood, Kind::Redirect };
    Fault fault { Fault::When(chance.below(3)), qsizetype(chance.below(400)),
        FileError {
            kinds[chance.below(std::size(kinds))], 0, std::nullopt, QStringLiteral("A fault.") } };
    // A listing that is not whole is no listing; anything else may be called a success.
    if (request.operation != Operation::List && chance.happens(300))
        fault.error.reset();
    if (request.operation == Operation::Put && fault.when != Fault::When::Afterwards)
        m_world.cloud.expectLoss();
    return fault;
}

void MirrorModel::settle()
{
    m_world.isQuiet = true;
    rest();
    m_claims.checkAgreement();
    m_claims.checkPhases();
    const bool isLost = !m_world.cloud.isThere(modelFolders().container);
    for (auto& device : m_devices) {
        // Where the whole container was lost, only a user can tell that it is to be made again.
        if (isLost)
            device->switchOff();
        device->switchOn();
    }
    rest();
    m_claims.checkAgreement();
    addDevice();
    m_devices.back()->switchOn();
    rest();
    m_claims.checkAgreement();
    m_claims.checkPhases();
    m_claims.checkCompleteness(m_bills);
}

/// Until nothing changes any more for longer than anything is put off.
void MirrorModel::rest()
{
    QString before;
    int unchanged = 0;
    for (int round = 0; unchanged < 12; ++round) {
        require(round < 80, "Devices that are left alone come to rest.");
        m_world.time += 3 * Minute;
        for (auto& device : m_devices)
            device->sync();
        m_claims.checkBeliefs();
        m_claims.checkLife();
        const QString now = picture();
        unchanged = now == before ? unchanged + 1 : 0;
        before = now;
    }
}

/// All that could change.
QString MirrorModel::picture()
{
    QString result = m_world.cloud.picture();
    for (const auto& device : m_devices) {
        auto& [revision, text] = m_pictures.try_emplace(device.get(), -1, QString()).first->second;
        if (std::exchange(revision, device->revision()) != device->revision())
            text = pictureOf(*device);
        result += text;
    }
    return result;
}
