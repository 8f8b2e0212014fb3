#pragma once

#include "Item.h"
#include "NSFetchedResultsController.h"
#include "UserSettings.h"

#include <QPersistentModelIndex>
#include <QtQml/qqmlregistration.h>

/// The rows of the saved bills list, newest first: the live fetch, in the texts that a row shows.
///
/// Roles: "ref", "amount" (the total, or the share where the settings ask for it), "date" and
/// "marked". A record without a stamp cannot be shown: asking for its date stops the process.
class SavedBills : public NSFetchedResultsController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The screen's state makes its list.")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int markedCount READ markedCount NOTIFY marksChanged)

public:
    /// Fetches at once; where that fails the list is empty and a diagnostic line says why. The
    /// settings and the context must outlive the list.
    SavedBills(const UserSettings& userSettings, NSManagedObjectContext& context,
        QObject* parent = nullptr);

    [[nodiscard]] std::shared_ptr<Item> item(int row) const;
    [[nodiscard]] int count() const { return rowCount(); }

    /// Marks the row to be deleted with others, or takes the mark off.
    void toggleMark(int row);
    void clearMarks();
    [[nodiscard]] int markedCount() const { return static_cast<int>(m_marks.size()); }
    /// In no order.
    [[nodiscard]] QList<int> markedRows() const;

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();
    void marksChanged();

private:
    enum Role { RefRole = Qt::UserRole + 1, AmountRole, DateRole, MarkedRole };

    [[nodiscard]] QString amountText(const Item& item) const;
    [[nodiscard]] QString dateText(const Item& item) const;
    void followSettings();
    void announce(Role role);
    void dropLostMarks();

    const UserSettings& m_userSettings;
    QList<QPersistentModelIndex> m_marks;
};
