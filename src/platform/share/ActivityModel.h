#pragma once

#include "Activity.h"

#include <QAbstractListModel>

#include <vector>

/// The available activities of one group, in their order. Only ever grows: what the desktop says of
/// a destination may come late.
class ActivityModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { ActivityRole = Qt::UserRole };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// Puts an activity behind all of the same and of a lower order.
    void insert(Activity* activity, int order);

private:
    struct Entry {
        Activity* activity;
        int order;
    };
    std::vector<Entry> m_entries;
};
