#pragma once

#include "FetchOrder.h"
#include "IdentityList.h"
#include "NSManagedObjectContext.h"

#include <QAbstractListModel>
#include <QTimer>

#include <deque>

class IdentityCursor;

/// A fetch that stays true: a list model that follows its context, saved or not, with exact
/// insertions, removals, moves and updates of rows.
///
/// Of each record only the identity is kept, and the objects of the few hundred rows last asked
/// for; others are read in batches as rows are asked for. The number of rows is right at once. The
/// identities of a long list are read in slices by the event loop after performFetch(); asking for
/// a row that was not reached reads up to it. Changes that scatter over very many rows reset the
/// model, and so does a row whose record turns out to be gone. A fetch limit or offset is only
/// applied by performFetch().
class NSFetchedResultsController : public QAbstractListModel {
    Q_OBJECT

public:
    using Object = NSManagedObjectContext::Object;

    /// The context must outlive the list.
    NSFetchedResultsController(
        NSFetchRequest request, NSManagedObjectContext& context, QObject* parent = nullptr);
    ~NSFetchedResultsController() override;

    /// Fills the list, or fills it afresh. On failure the list is empty and follows nothing. Not to
    /// be called by whoever is told of a change of rows; changing the context is allowed then.
    Result<void> performFetch();

    /// The record of a row, with its values read. The row must exist.
    [[nodiscard]] Object object(int row) const;
    /// -1 for a record that is not in the list. Looks at every row.
    [[nodiscard]] int rowOf(const NSManagedObjectID& id) const;
    /// False while identities are still being read in slices.
    [[nodiscard]] bool isComplete() const { return m_cursor == nullptr; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    /// Each attribute is a role: Qt::UserRole + 1 + its position in the entity, by its name.
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    struct Evaluation;

    [[nodiscard]] NSManagedObjectID idAt(qsizetype row) const;
    [[nodiscard]] std::optional<qsizetype> placeOf(const NSManagedObject& object);
    void readWindow(int row) const;

    Result<void> openCursor();
    Result<void> readAll();
    void readSlice();
    void readUpTo(qsizetype size) const;
    void cutShort();

    void follow(const ObjectChanges& changes);
    void apply(const ObjectChanges& changes);
    void applyExactly(const ObjectChanges& changes);
    [[nodiscard]] Evaluation evaluate(const ObjectChanges& changes) const;
    void followUpdate(const NSManagedObjectID& id);
    void moveRow(qsizetype from, const NSManagedObject& object);
    void withdrawRows(const Evaluation& evaluation);
    void removeRuns(const std::vector<std::pair<qsizetype, qsizetype>>& runs);
    void insertRow(const NSManagedObjectID& id);
    void announceUpdates(const Evaluation& evaluation);
    void adoptIdentities(const PermanentIdentities& identities);
    void startAfresh();

    NSFetchRequest m_request;
    NSManagedObjectContext& m_context;
    const NSEntityDescription* m_entity;
    std::optional<FetchOrder> m_order; // set while the list follows the context
    mutable IdentityList m_ids;
    mutable std::unique_ptr<IdentityCursor> m_cursor; // until every identity was read
    qsizetype m_total = 0; // rows, those not yet read included
    bool m_isFollowing = false;
    bool m_isOutOfStep = false; // rows do not tell what the store has
    std::deque<ObjectChanges> m_waiting; // changes that came while others were followed
    QTimer m_slices;
    mutable std::deque<std::vector<Object>> m_windows; // keeps the objects last asked for
};
