#include "HistoryView.h"

#include "Calendar.h"
#include "CoreDataManager.h"
#include "CurrentLocale.h"
#include "DateFormatter.h"
#include "Diagnostics.h"
#include "Formatting.h"

namespace {

constexpr int monthsKept = 6;

/// Held for the screen's interface: no row or line uses it.
[[maybe_unused]] const DateFormatter& itemFormatter()
{
    struct Styled : DateFormatter {
        Styled()
            : DateFormatter(dateLocale())
        {
            setShortDateAndMediumTime();
        }
    };
    static const Styled formatter;
    return formatter;
}

} // namespace

HistoryView::HistoryView(
    UserSettings& userSettings, NSManagedObjectContext& viewContext, Clock clock, QObject* parent)
    : QObject(parent)
    , m_viewContext(viewContext)
    , m_userSettings(userSettings)
    , m_clock(std::move(clock))
    , m_items(userSettings, viewContext)
{
    connect(&userSettings, &UserSettings::showShareInSavedBillsListChanged, this,
        &HistoryView::otherColumnChanged);
    connect(&m_items, &QAbstractItemModel::rowsInserted, this, &HistoryView::followRows);
    connect(&m_items, &QAbstractItemModel::rowsRemoved, this, &HistoryView::followRows);
    connect(&m_items, &QAbstractItemModel::rowsMoved, this, &HistoryView::followRows);
    connect(&m_items, &QAbstractItemModel::modelReset, this, &HistoryView::followReset);
}

HistoryView::~HistoryView() = default;

void HistoryView::setIsEditing(bool isEditing)
{
    if (m_isEditing == isEditing)
        return;
    m_isEditing = isEditing;
    m_items.clearMarks();
    Q_EMIT isEditingChanged();
}

void HistoryView::toggleColumn()
{
    m_userSettings.setShowShareInSavedBillsList(!m_userSettings.showShareInSavedBillsList());
}

void HistoryView::deleteItems(const QList<int>& offsets)
{
    // All before any is deleted: the rows move up.
    std::vector<std::shared_ptr<Item>> doomed;
    for (const int row : offsets)
        doomed.push_back(m_items.item(row));
    for (const std::shared_ptr<Item>& item : doomed)
        m_viewContext.deleteObject(*item);
    // What another program made of a bill meanwhile, or a renaming that failed earlier and was
    // ignored, is no reason to fail: who deletes a bill wants it gone.
    const Result<void> saved = store::saveDespiteConflicts(m_viewContext);
    if (!saved)
        fatalError(store::unresolvedError(saved.error()).toStdString());
}

void HistoryView::deleteRow(int row)
{
    if (row >= 0 && row < m_items.rowCount())
        deleteItems({ row });
}

void HistoryView::deleteMarked() { deleteItems(m_items.markedRows()); }

void HistoryView::deleteByKey(int row)
{
    if (m_items.markedCount() > 0)
        deleteMarked();
    else
        deleteRow(row);
}

void HistoryView::pressRow(int row)
{
    if (row < 0 || row >= m_items.rowCount())
        return;
    if (m_isEditing)
        m_items.toggleMark(row);
    else
        choose(row);
}

void HistoryView::choose(int row)
{
    m_chosen = m_items.index(row);
    show(std::make_unique<DetailView>(m_items.item(row), m_userSettings));
}

void HistoryView::unchoose()
{
    m_chosen = QPersistentModelIndex();
    show(nullptr);
}

void HistoryView::show(std::unique_ptr<DetailView> detail)
{
    if (!detail && !m_detail)
        return;
    // The old page is still bound to the old bill until it hears of the new one.
    const std::unique_ptr<DetailView> previous = std::exchange(m_detail, std::move(detail));
    if (m_detail) {
        connect(m_detail.get(), &DetailView::changed, this, &HistoryView::detailTitleChanged);
        m_billDescription.reset(detailTitle());
        Q_EMIT billDescriptionChanged();
    }
    Q_EMIT detailChanged();
    Q_EMIT detailTitleChanged();
    Q_EMIT chosenRowChanged();
}

void HistoryView::followRows()
{
    if (!m_detail)
        return;
    if (m_chosen.isValid())
        Q_EMIT chosenRowChanged();
    else
        unchoose();
}

void HistoryView::followReset()
{
    if (!m_detail)
        return;
    m_chosen = m_items.index(m_items.rowOf(m_detail->item()->objectID()));
    followRows();
}

void HistoryView::renameRow(int row)
{
    if (m_isEditing || row < 0 || row >= m_items.rowCount())
        return;
    m_closesAfterRename = !m_detail;
    choose(row);
    askForDescription();
}

void HistoryView::setShowRename(bool show)
{
    m_showRename = show;
    Q_EMIT showRenameChanged();
    if (!show && std::exchange(m_closesAfterRename, false))
        unchoose();
}

void HistoryView::askForDescription()
{
    if (!m_detail)
        return;
    m_offeredDescription = detailTitle();
    m_billDescription.reset(m_offeredDescription);
    Q_EMIT billDescriptionChanged();
    setShowRename(true);
}

void HistoryView::rename()
{
    // The bill may have been deleted while the dialog was open.
    if (!m_detail)
        return;
    m_billDescription.reset(m_billDescription.textOrDefault());
    Q_EMIT billDescriptionChanged();
    // The field shows the line breaks of a record of another origin as blanks: a description that
    // was not touched keeps them.
    const bool isTouched = m_billDescription.text() != m_offeredDescription;
    if (isTouched || !m_detail->item()->ref())
        m_detail->item()->setRef(m_billDescription.text());
    (void)m_viewContext.save();
}

void HistoryView::useThisBill()
{
    if (m_detail)
        useThisBill(*m_detail->item());
}

void HistoryView::useThisBill(const Item& item)
{
    m_userSettings.setBill(item.bill());
    m_userSettings.setPeople(item.people());
    m_userSettings.setService(item.service());
    m_userSettings.setTipFromEveryone(item.everyone());
    m_userSettings.setRoundTip(item.roundtip());
    m_userSettings.setRoundShare(item.roundshare());
    Q_EMIT dismissed();
}

void HistoryView::deleteOldBills()
{
    const std::optional<QDateTime> cutOff
        = dateByAddingMonths(-monthsKept, m_clock(), dateLocale());
    if (!cutOff)
        fatalError("Unexpectedly found nil while unwrapping an Optional value");
    NSFetchRequest request = Item::fetchRequest();
    request.predicate
        = Predicate { QStringLiteral("timestamp"), Predicate::Comparison::LessThan, *cutOff };
    // The screen may be closed before its turn comes.
    NSManagedObjectContext& context = m_viewContext;
    context.perform([&context, request] {
        const Result<void> deleted = deleteBills(context, request);
        if (!deleted)
            printDiagnostic(deleted.error().toString().toStdString());
    });
}

void HistoryView::deleteAllBills()
{
    const Result<void> deleted = deleteBills(m_viewContext, Item::fetchRequest());
    if (!deleted)
        printDiagnostic(deleted.error().toString().toStdString());
    else if (m_items.rowCount() > 0)
        (void)m_items.performFetch(); // rows of bills that another program had deleted before
}

Result<void> HistoryView::deleteBills(
    NSManagedObjectContext& context, const NSFetchRequest& request)
{
    const Result<void> deleted = executeAndMergeChanges(context, NSBatchDeleteRequest(request));
    return deleted && context.hasChanges() ? context.save() : deleted;
}

void HistoryView::setBillDescription(const QString& description)
{
    if (m_billDescription.edit(description))
        Q_EMIT billDescriptionChanged();
}

QString HistoryView::currencySymbolText() const { return currencySymbol(); }

QString HistoryView::otherColumn() const
{
    return m_userSettings.showShareInSavedBillsList() ? tr("Total") : tr("Share");
}

QString HistoryView::areYouSure() const { return strAreYouSure(); }

QString HistoryView::detailTitle() const
{
    return m_detail ? Item::oneLine(m_detail->item()->ref().value_or(strBill())) : QString();
}
