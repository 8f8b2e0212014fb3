#include "SavedBills.h"

#include "Diagnostics.h"
#include "Formatting.h"

namespace {

NSFetchRequest newestFirst()
{
    NSFetchRequest request = Item::fetchRequest();
    request.sortDescriptors
        = { { QStringLiteral("timestamp"), SortDescriptor::Order::Descending } };
    return request;
}

} // namespace

SavedBills::SavedBills(
    const UserSettings& userSettings, NSManagedObjectContext& context, QObject* parent)
    : NSFetchedResultsController(newestFirst(), context, parent)
    , m_userSettings(userSettings)
{
    connect(this, &QAbstractItemModel::rowsInserted, this, &SavedBills::countChanged);
    connect(this, &QAbstractItemModel::rowsRemoved, this, &SavedBills::countChanged);
    connect(this, &QAbstractItemModel::modelReset, this, &SavedBills::countChanged);
    connect(this, &QAbstractItemModel::rowsRemoved, this, &SavedBills::dropLostMarks);
    connect(this, &QAbstractItemModel::modelReset, this, &SavedBills::dropLostMarks);
    followSettings();
    const Result<void> fetched = performFetch();
    if (!fetched)
        printDiagnostic(fetched.error().toString().toStdString());
}

void SavedBills::followSettings()
{
    const auto amounts = [this] { announce(AmountRole); };
    connect(&m_userSettings, &UserSettings::showCurrencyChanged, this, amounts);
    connect(&m_userSettings, &UserSettings::showShareInSavedBillsListChanged, this, amounts);
}

void SavedBills::announce(Role role)
{
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), { role });
}

std::shared_ptr<Item> SavedBills::item(int row) const
{
    return std::static_pointer_cast<Item>(object(row));
}

QVariant SavedBills::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    switch (role) {
    case RefRole:
        return Item::oneLine(item(index.row())->ref().value_or(QString()));
    case AmountRole:
        return amountText(*item(index.row()));
    case DateRole:
        return dateText(*item(index.row()));
    case MarkedRole:
        return m_marks.contains(QPersistentModelIndex(index));
    default:
        return {};
    }
}

QString SavedBills::amountText(const Item& item) const
{
    const double amount = m_userSettings.showShareInSavedBillsList() ? item.share() : item.total();
    return formattedAmount(amount, m_userSettings.amountStyle());
}

QString SavedBills::dateText(const Item& item) const
{
    const std::optional<QDateTime> stamp = item.timestamp();
    // Deleted by another program meanwhile: not a broken record, only a row that is still to go.
    if (!stamp && item.isFault())
        return {};
    if (!stamp)
        fatalError("Unexpectedly found nil while unwrapping an Optional value");
    return dateStr(stamp);
}

QHash<int, QByteArray> SavedBills::roleNames() const
{
    return { { RefRole, "ref" }, { AmountRole, "amount" }, { DateRole, "date" },
        { MarkedRole, "marked" } };
}

void SavedBills::toggleMark(int row)
{
    const QPersistentModelIndex place(index(row));
    if (!m_marks.removeOne(place))
        m_marks.append(place);
    Q_EMIT dataChanged(place, place, { MarkedRole });
    Q_EMIT marksChanged();
}

void SavedBills::clearMarks()
{
    m_marks.clear();
    announce(MarkedRole);
    Q_EMIT marksChanged();
}

QList<int> SavedBills::markedRows() const
{
    QList<int> rows;
    for (const QPersistentModelIndex& mark : m_marks)
        rows.append(mark.row());
    return rows;
}

void SavedBills::dropLostMarks()
{
    const auto lost
        = m_marks.removeIf([](const QPersistentModelIndex& mark) { return !mark.isValid(); });
    if (lost > 0)
        Q_EMIT marksChanged();
}
