// How a live fetch follows its context.

#include "NSFetchedResultsController.h"

#include "sqlite/StoreReader.h"

#include <QSet>

#include <algorithm>

namespace {

// Beyond these a view is faster told to start afresh.
constexpr std::size_t maxRuns = 1000;
constexpr std::size_t maxInsertions = 1000;

} // namespace

/// What a change means to the rows.
struct NSFetchedResultsController::Evaluation {
    QSet<qint64> removed; // no longer in the list, or not where they were
    QSet<qint64> updated; // in their place, with other values
    std::vector<NSManagedObjectID> inserted; // to be put in their place, if they match
};

void NSFetchedResultsController::follow(const ObjectChanges& changes)
{
    // Whoever is told of a change of rows may change the context; the rows on which the present
    // change still works must stay where they are until it is done.
    if (m_isFollowing)
        return m_waiting.push_back(changes);
    m_isFollowing = true;
    apply(changes);
    while (!m_waiting.empty()) {
        const ObjectChanges next = std::move(m_waiting.front());
        m_waiting.pop_front();
        apply(next);
    }
    m_isFollowing = false;
}

void NSFetchedResultsController::apply(const ObjectChanges& changes)
{
    if (!m_order)
        return;
    if (!changes.isEverything)
        applyExactly(changes);
    if (changes.isEverything || m_isOutOfStep)
        startAfresh();
}

void NSFetchedResultsController::applyExactly(const ObjectChanges& changes)
{
    readUpTo(m_total);
    cutShort();
    if (changes.inserted.empty() && changes.deleted.empty() && changes.updated.size() == 1
        && (changes.updated.front().attributes & m_order->attributes()) != 0)
        return followUpdate(changes.updated.front().id);

    const Evaluation evaluation = evaluate(changes);
    if (evaluation.inserted.size() > maxInsertions)
        return startAfresh();
    withdrawRows(evaluation);
    for (const NSManagedObjectID& id : evaluation.inserted)
        insertRow(id);
    announceUpdates(evaluation);
}

NSFetchedResultsController::Evaluation NSFetchedResultsController::evaluate(
    const ObjectChanges& changes) const
{
    Evaluation evaluation;
    evaluation.removed.reserve(static_cast<qsizetype>(changes.deleted.size()));
    for (const NSManagedObjectID& id : changes.deleted) {
        if (id.entity() == m_entity)
            evaluation.removed.insert(id.number());
    }
    // Whatever is to be put in its place leaves the place it may have; a record that is reported
    // twice is put there once.
    const auto place = [&](const NSManagedObjectID& id) {
        if (id.entity() != m_entity || evaluation.removed.contains(id.number()))
            return;
        evaluation.removed.insert(id.number());
        evaluation.inserted.push_back(id);
    };
    for (const ObjectChanges::Update& update : changes.updated) {
        if ((update.attributes & m_order->attributes()) != 0)
            place(update.id);
        else if (update.id.entity() == m_entity)
            evaluation.updated.insert(update.id.number());
    }
    for (const NSManagedObjectID& id : changes.inserted)
        place(id);
    return evaluation;
}

void NSFetchedResultsController::startAfresh()
{
    m_isOutOfStep = false;
    (void)performFetch();
}

void NSFetchedResultsController::followUpdate(const NSManagedObjectID& id)
{
    if (id.entity() != m_entity)
        return;
    const qsizetype row = m_ids.indexOf(id.number());
    if (row < 0)
        return insertRow(id);
    const Result<Object> object = m_context.existingObject(id);
    if (!object)
        m_isOutOfStep = true;
    else if (!m_order->matches(**object))
        removeRuns({ { row, 1 } });
    else
        moveRow(row, **object);
}

void NSFetchedResultsController::moveRow(qsizetype from, const NSManagedObject& object)
{
    const qint64 number = m_ids.at(from);
    m_ids.remove(from, 1);
    const std::optional<qsizetype> place = placeOf(object);
    m_ids.insert(from, number);
    if (!place)
        return;
    const qsizetype to = *place;
    if (to != from) {
        const int destination = static_cast<int>(to > from ? to + 1 : to);
        beginMoveRows({}, static_cast<int>(from), static_cast<int>(from), {}, destination);
        m_ids.remove(from, 1);
        m_ids.insert(to, number);
        endMoveRows();
    }
    const QModelIndex row = index(static_cast<int>(to));
    Q_EMIT dataChanged(row, row);
}

/// Every row but the object's own must stand in its place. A record that was deleted elsewhere has
/// no values any more and would mislead the search, so there is no place then.
std::optional<qsizetype> NSFetchedResultsController::placeOf(const NSManagedObject& object)
{
    qsizetype first = 0;
    qsizetype end = m_ids.size();
    while (first < end) {
        const qsizetype middle = first + (end - first) / 2;
        const Result<Object> other = m_context.existingObject(idAt(middle));
        if (!other) {
            m_isOutOfStep = true;
            return std::nullopt;
        }
        if (m_order->precedes(object, **other))
            end = middle;
        else
            first = middle + 1;
    }
    return first;
}

void NSFetchedResultsController::withdrawRows(const Evaluation& evaluation)
{
    if (evaluation.removed.isEmpty())
        return;
    std::vector<std::pair<qsizetype, qsizetype>> runs;
    for (qsizetype row = 0; row < m_ids.size(); ++row) {
        if (!evaluation.removed.contains(m_ids.at(row)))
            continue;
        if (!runs.empty() && runs.back().first + runs.back().second == row)
            ++runs.back().second;
        else
            runs.emplace_back(row, 1);
    }
    removeRuns(runs);
}

void NSFetchedResultsController::removeRuns(
    const std::vector<std::pair<qsizetype, qsizetype>>& runs)
{
    const bool startsAfresh = runs.size() > maxRuns;
    if (startsAfresh)
        beginResetModel();
    for (auto run = runs.rbegin(); run != runs.rend(); ++run) {
        if (!startsAfresh)
            beginRemoveRows(
                {}, static_cast<int>(run->first), static_cast<int>(run->first + run->second) - 1);
        m_ids.remove(run->first, run->second);
        m_total = m_ids.size();
        if (!startsAfresh)
            endRemoveRows();
    }
    if (startsAfresh)
        endResetModel();
}

void NSFetchedResultsController::insertRow(const NSManagedObjectID& id)
{
    const Result<Object> object = m_context.existingObject(id);
    if (!object || !m_order->matches(**object))
        return;
    const std::optional<qsizetype> place = placeOf(**object);
    if (!place)
        return;
    const int row = static_cast<int>(*place);
    beginInsertRows({}, row, row);
    m_ids.insert(row, id.number());
    m_total = m_ids.size();
    endInsertRows();
}

void NSFetchedResultsController::announceUpdates(const Evaluation& evaluation)
{
    if (evaluation.updated.isEmpty())
        return;
    for (qsizetype row = 0; row < m_ids.size(); ++row) {
        if (!evaluation.updated.contains(m_ids.at(row)))
            continue;
        const QModelIndex changed = index(static_cast<int>(row));
        Q_EMIT dataChanged(changed, changed);
    }
}

void NSFetchedResultsController::adoptIdentities(const PermanentIdentities& identities)
{
    if (!m_order)
        return;
    m_isOutOfStep = m_isOutOfStep || m_isFollowing; // the change at hand names the old identities
    QHash<qint64, qint64> permanent;
    for (const auto& [before, after] : identities) {
        if (before.entity() == m_entity)
            permanent.insert(before.number(), after.number());
    }
    for (qsizetype row = 0; row < m_ids.size() && !permanent.isEmpty(); ++row) {
        if (m_ids.at(row) < 0 && permanent.contains(m_ids.at(row)))
            m_ids.replace(row, permanent.take(m_ids.at(row)));
    }
}
