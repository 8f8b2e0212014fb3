#include "NSFetchedResultsController.h"

#include "NSPersistentStoreCoordinator.h"
#include "sqlite/SqliteStore.h"

#include <QElapsedTimer>

#include <algorithm>

namespace {

constexpr int windowSize = 64;
constexpr std::size_t maxWindows = 8;
constexpr std::size_t firstSlice = 256;
constexpr std::size_t sliceStep = 4096;
constexpr qint64 sliceMilliseconds = 4;
constexpr qsizetype room = 1024; // for insertions, so that the first does not copy the list

} // namespace

NSFetchedResultsController::NSFetchedResultsController(
    NSFetchRequest request, NSManagedObjectContext& context, QObject* parent)
    : QAbstractListModel(parent)
    , m_request(std::move(request))
    , m_context(context)
    , m_entity(
          context.persistentStoreCoordinator().managedObjectModel().entity(m_request.entityName))
{
    m_slices.setInterval(0);
    connect(&m_slices, &QTimer::timeout, this, &NSFetchedResultsController::readSlice);
    connect(&m_context, &NSManagedObjectContext::objectsDidChange, this,
        &NSFetchedResultsController::follow);
    connect(&m_context, &NSManagedObjectContext::identitiesBecamePermanent, this,
        &NSFetchedResultsController::adoptIdentities);
}

NSFetchedResultsController::~NSFetchedResultsController() = default;

// Filling

Result<void> NSFetchedResultsController::performFetch()
{
    m_context.processPendingChanges();
    beginResetModel();
    m_order.reset();
    m_windows.clear();
    m_cursor.reset();
    m_ids.clear();
    m_total = 0;
    // Only the plain state of the store can be walked through slice by slice.
    const bool isPlain = !m_context.hasChanges() && !m_context.isPinned();
    Result<void> filled = isPlain ? openCursor() : readAll();
    if (filled)
        m_order.emplace(*m_entity, m_request);
    endResetModel();
    if (m_cursor)
        m_slices.start();
    return filled;
}

Result<void> NSFetchedResultsController::openCursor()
{
    const Result<SqliteStore*> store = m_context.persistentStoreCoordinator().loadedStore();
    if (!store)
        return store.error();
    auto cursor = (*store)->openCursor(m_request);
    if (!cursor)
        return cursor.error();
    const Result<qint64> count = (*cursor)->count();
    if (!count)
        return count.error();
    m_total = *count;
    m_ids.reserve(m_total + room);
    m_cursor = std::move(*cursor);
    readUpTo(std::min<qsizetype>(m_total, firstSlice));
    if (m_ids.size() == m_total)
        m_cursor.reset();
    else if (!m_cursor)
        m_total = m_ids.size(); // the file became unreadable
    return {};
}

Result<void> NSFetchedResultsController::readAll()
{
    const auto ids = m_context.fetchIdentities(m_request);
    if (!ids)
        return ids.error();
    std::vector<qint64> numbers;
    numbers.reserve(ids->size());
    for (const NSManagedObjectID& id : *ids)
        numbers.push_back(id.number());
    m_ids.append(numbers);
    m_total = m_ids.size();
    return {};
}

void NSFetchedResultsController::readSlice()
{
    QElapsedTimer clock;
    clock.start();
    while (m_cursor && m_ids.size() < m_total && clock.elapsed() < sliceMilliseconds)
        readUpTo(m_ids.size() + static_cast<qsizetype>(sliceStep));
    if (m_cursor && m_ids.size() >= m_total)
        m_cursor.reset();
    if (!m_cursor)
        m_slices.stop();
    cutShort();
}

void NSFetchedResultsController::readUpTo(qsizetype size) const
{
    if (!m_cursor || m_ids.size() >= size)
        return;
    std::vector<qint64> numbers;
    const Result<bool> hasMore
        = m_cursor->next(static_cast<std::size_t>(size - m_ids.size()), numbers);
    m_ids.append(numbers);
    if (!hasMore || !*hasMore)
        m_cursor.reset();
}

/// A list whose file became unreadable half way ends where reading ended.
void NSFetchedResultsController::cutShort()
{
    if (m_cursor || m_ids.size() >= m_total)
        return;
    beginRemoveRows({}, static_cast<int>(m_ids.size()), static_cast<int>(m_total) - 1);
    m_total = m_ids.size();
    endRemoveRows();
}

// Reading

NSManagedObjectID NSFetchedResultsController::idAt(qsizetype row) const
{
    return { m_entity, m_ids.at(row) };
}

NSFetchedResultsController::Object NSFetchedResultsController::object(int row) const
{
    readUpTo(row + windowSize);
    if (row >= m_ids.size())
        return m_context.objectWithID({ m_entity, 0 }); // unreadable: an object without a record
    const NSManagedObject* known = m_context.registeredObject(idAt(row));
    if (known == nullptr || known->isFault())
        readWindow(row);
    return m_context.objectWithID(idAt(row));
}

void NSFetchedResultsController::readWindow(int row) const
{
    const qsizetype first = row - row % windowSize;
    const qsizetype end = std::min<qsizetype>(first + windowSize, m_ids.size());
    std::vector<Object> objects;
    objects.reserve(windowSize);
    for (qsizetype i = first; i < end; ++i)
        objects.push_back(m_context.objectWithID(idAt(i)));
    (void)m_context.fulfilFaults(objects); // where that fails, they are read one by one
    m_windows.push_back(std::move(objects));
    if (m_windows.size() > maxWindows)
        m_windows.pop_front();
}

int NSFetchedResultsController::rowOf(const NSManagedObjectID& id) const
{
    readUpTo(m_total);
    return id.entity() == m_entity ? static_cast<int>(m_ids.indexOf(id.number())) : -1;
}

int NSFetchedResultsController::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_total);
}

QVariant NSFetchedResultsController::data(const QModelIndex& index, int role) const
{
    const int attribute = role - Qt::UserRole - 1;
    if (!index.isValid() || attribute < 0 || attribute >= m_entity->attributeCount())
        return {};
    return toVariant(object(index.row())->attribute(attribute));
}

QHash<int, QByteArray> NSFetchedResultsController::roleNames() const
{
    QHash<int, QByteArray> names;
    for (int i = 0; m_entity != nullptr && i < m_entity->attributeCount(); ++i)
        names.insert(Qt::UserRole + 1 + i,
            m_entity->attributes()[static_cast<std::size_t>(i)].name.toUtf8());
    return names;
}
