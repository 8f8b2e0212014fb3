#include "ActivityModel.h"

#include <algorithm>

int ActivityModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

QVariant ActivityModel::data(const QModelIndex& index, int role) const
{
    if (role != ActivityRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    return QVariant::fromValue(m_entries[static_cast<std::size_t>(index.row())].activity);
}

QHash<int, QByteArray> ActivityModel::roleNames() const { return { { ActivityRole, "activity" } }; }

void ActivityModel::insert(Activity* activity, int order)
{
    const auto place = std::upper_bound(m_entries.begin(), m_entries.end(), order,
        [](int value, const Entry& entry) { return value < entry.order; });
    const int row = static_cast<int>(place - m_entries.begin());
    beginInsertRows({}, row, row);
    m_entries.insert(place, { activity, order });
    endInsertRows();
}
