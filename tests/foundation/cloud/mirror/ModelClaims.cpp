#include "ModelClaims.h"

#include "MirrorFixture.h"

#include <algorithm>

using namespace mirror;

namespace {

constexpr qint64 Minute = 60'000;

QString textOf(const QUuid& id) { return id.toString(); }
QString textOf(const Text& key) { return QString::fromUtf8(key.utf8()); }

template <class Row, class Rows> bool isSaid(const Rows& rows, const Row& row)
{
    const auto found = rows.find(keyOf(row));
    return found != rows.end() && RowFormat<Row>::join(found->second, row) == found->second;
}

bool isDead(const Record& record) { return std::holds_alternative<DeadRecord>(record.state); }

} // namespace

void require(bool holds, const char* claim)
{
    if (!holds)
        throw Violation { QString::fromLatin1(claim) };
}

void ModelClaims::checkBeliefs()
{
    m_world.cloud.learn(m_world.time);
    const bool isExcused = m_world.cloud.takeLoss();
    for (const auto& device : m_devices) {
        const Revisions now { device->revision(), m_world.cloud.revision() };
        Revisions& checked = m_believed[device->number()];
        if (device->isInTransaction() || (now == checked && !isExcused))
            continue;
        checkBeliefs<Record>(device->data().records, isExcused);
        checkBeliefs<KeyValue>(device->data().keyValues, isExcused);
        checked = now;
    }
}

template <class Row>
void ModelClaims::checkBeliefs(const typename MemoryShelf<Row>::Data& shelf, bool isExcused)
{
    std::map<QString, ModelCloud::Rows<Row>> told; // by folder
    const FileKey* file = nullptr; // of the row before, as a rule of the next one, too
    const ModelCloud::Rows<Row>* said = nullptr;
    bool isThere = false;
    for (const auto& [key, carried] : shelf.rows) {
        if (!carried.carrier)
            continue;
        if (file == nullptr || *file != *carried.carrier) {
            file = &*carried.carrier;
            said = m_world.cloud.contents<Row>(file->name);
            isThere = said != nullptr && m_world.cloud.isWhole(file->path());
        }
        if (said != nullptr) {
            const auto line = said->find(key);
            require(line != said->end() && line->second == carried.row,
                "A carrier says exactly the state that it carries.");
        }
        if (!isThere)
            checkAbsence<Row>(carried, isExcused, told);
        else if (!m_excused.empty())
            m_excused.erase({ file->path(), textOf(key) });
    }
}

/// Of the file that carries the row.
template <class Row>
void ModelClaims::checkAbsence(const typename MemoryShelf<Row>::Carried& carried, bool isExcused,
    std::map<QString, ModelCloud::Rows<Row>>& told)
{
    const QString& folder = carried.carrier->folder;
    if (!told.contains(folder))
        told.emplace(folder, m_world.cloud.told<Row>(folder));
    if (isSaid(told.at(folder), carried.row) || m_world.cloud.isClosed(folder))
        return;
    const Excuse excuse { carried.carrier->path(), textOf(keyOf(carried.row)) };
    if (isExcused)
        m_excused.insert(excuse);
    require(m_excused.contains(excuse), "What a device believes to be in the cloud is there.");
}

void ModelClaims::checkLife()
{
    for (const auto& device : m_devices) {
        require(device->isSwitchedOn() == (device->phase() != MirrorPhase::Off),
            "Nobody but the user switches mirroring on or off.");
        if (std::exchange(m_lived[device->number()], device->revision()) != device->revision())
            checkRows(*device);
    }
}

void ModelClaims::checkRows(const ModelDevice& device)
{
    std::map<QUuid, bool>& known = m_isDead[device.number()];
    const auto& rows = device.data().records.rows;
    for (const auto& [id, wasDead] : known) {
        const auto row = rows.find(id);
        require(row != rows.end(), "No row is lost.");
        require(!wasDead || isDead(row->second.row), "No deleted bill comes back.");
    }
    for (const auto& [id, carried] : rows) {
        known[id] = isDead(carried.row);
        m_isDeleted[id] |= isDead(carried.row);
    }
}

void ModelClaims::checkRemoval(const ModelDevice& device, const QString& path)
{
    if (device.sawWipe()) {
        m_world.cloud.expectLoss();
        return;
    }
    if (path.endsWith(QLatin1Char('/'))) {
        require(m_world.cloud.isClosed(path), "A folder is deleted after its marker was stored.");
        return;
    }
    // In an epoch that was closed, another device deletes all that says the same, too.
    if (!m_world.cloud.isWhole(path) || m_world.cloud.isClosed(folderOf(path)))
        return;
    const QString name = path.sliced(folderOf(path).size());
    if (const auto* rows = m_world.cloud.contents<Record>(name)) {
        const auto told = m_world.cloud.told<Record>(folderOf(path), path);
        for (const auto& [id, row] : *rows)
            require(isSaid(told, row), "What a deleted file says stands in others.");
    }
    if (const auto* rows = m_world.cloud.contents<KeyValue>(name)) {
        const auto told = m_world.cloud.told<KeyValue>(folderOf(path), path);
        for (const auto& [key, row] : *rows)
            require(isSaid(told, row), "What a deleted file says stands in others.");
    }
}

void ModelClaims::checkCreation(const ModelDevice& device) const
{
    const auto epoch = device.data().memory.epoch;
    require(device.phaseBefore() != MirrorPhase::Off && device.phase() != MirrorPhase::Deleted,
        "Only a device that mirrors makes an epoch.");
    if (device.phase() != MirrorPhase::Mirroring || !epoch)
        return;
    const auto missing = m_world.cloud.missingSince(modelFolders().epoch(*epoch));
    require(missing && m_world.time - *missing >= 10 * Minute,
        "A missing folder is not made again at once.");
}

void ModelClaims::checkAgreement() const
{
    const ModelDevice* first = nullptr;
    for (const auto& device : m_devices) {
        const bool isRelated = m_world.cloud.isThere(modelFolders().container)
            && device->phase() == MirrorPhase::Mirroring
            && device->data().memory.missingListings == 0;
        // A clock that does not run never shows that ten minutes are over.
        if (!isRelated || (first == nullptr && !device->hasClockThatRuns()))
            continue;
        if (first == nullptr)
            first = device.get();
        const auto haveSameRow = [](const auto& left, const auto& right) {
            return left.first == right.first && left.second.row == right.second.row;
        };
        const auto& mine = device->data();
        const auto& other = first->data();
        require(std::ranges::equal(mine.records.rows, other.records.rows, haveSameRow),
            "Devices agree on the bills.");
        require(std::ranges::equal(mine.keyValues.rows, other.keyValues.rows, haveSameRow),
            "Devices agree on the values.");
    }
}

void ModelClaims::checkPhases() const
{
    if (!m_world.cloud.isThere(modelFolders().container))
        return; // then nothing is known
    for (const auto& device : m_devices) {
        require(device->phase() != MirrorPhase::Joining, "Joining comes to an end.");
        require(device->phase() != MirrorPhase::Deleted || !m_world.cloud.isAnyEpochOpen(),
            "A device that was stopped joins an epoch that is open.");
        require(!device->data().memory.deletion, "A deletion comes to an end.");
    }
}

void ModelClaims::checkCompleteness(quint32 bills) const
{
    for (const auto& device : m_devices) {
        checkCarriers<Record>(device->data().records);
        checkCarriers<KeyValue>(device->data().keyValues);
        const auto& rows = device->data().records.rows;
        for (quint32 number = 1; number <= bills; ++number) {
            const auto bill = m_isDeleted.find(identity(number));
            if (bill == m_isDeleted.end())
                continue; // its transaction failed
            const auto row = rows.find(identity(number));
            require(row != rows.end(), "Every bill is on every device.");
            require(isDead(row->second.row) == bill->second,
                "A bill lives exactly where it was not deleted.");
        }
    }
}

template <class Row>
void ModelClaims::checkCarriers(const typename MemoryShelf<Row>::Data& shelf) const
{
    for (const auto& [key, carried] : shelf.rows) {
        require(carried.carrier.has_value(), "Everything is published at rest.");
        require(m_world.cloud.isWhole(carried.carrier->path()), "Every carrier is there at rest.");
    }
}
