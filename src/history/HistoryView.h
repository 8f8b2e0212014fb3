#pragma once

#include "DescriptionBuffer.h"
#include "DetailView.h"
#include "GlobalModel.h"
#include "SavedBills.h"
#include "UserSettings.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <memory>

/// State and actions of the saved bills screen: the list, the page of the chosen bill, and their
/// dialogs. Made anew each time the screen is opened.
class HistoryView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes the screen's state.")
    Q_PROPERTY(SavedBills* items READ items CONSTANT)
    Q_PROPERTY(bool isEditing READ isEditing WRITE setIsEditing NOTIFY isEditingChanged)
    Q_PROPERTY(bool promptToDelete MEMBER m_promptToDelete NOTIFY promptToDeleteChanged)
    Q_PROPERTY(bool promptToDeleteOld MEMBER m_promptToDeleteOld NOTIFY promptToDeleteOldChanged)
    Q_PROPERTY(bool showUseThisBill MEMBER m_showUseThisBill NOTIFY showUseThisBillChanged)
    Q_PROPERTY(bool showRename READ showRename WRITE setShowRename NOTIFY showRenameChanged)
    Q_PROPERTY(QString billDescription READ billDescription WRITE setBillDescription NOTIFY
            billDescriptionChanged)
    Q_PROPERTY(QString descriptionNotice READ descriptionNotice NOTIFY billDescriptionChanged)
    Q_PROPERTY(QString currencySymbol READ currencySymbolText CONSTANT)
    /// The amount that the list does not show and would switch to.
    Q_PROPERTY(QString otherColumn READ otherColumn NOTIFY otherColumnChanged)
    Q_PROPERTY(QString areYouSure READ areYouSure CONSTANT)
    /// The chosen bill; null while there is none.
    Q_PROPERTY(DetailView* detail READ detail NOTIFY detailChanged)
    Q_PROPERTY(QString detailTitle READ detailTitle NOTIFY detailTitleChanged)
    /// The row of the chosen bill, -1 while there is none.
    Q_PROPERTY(int chosenRow READ chosenRow NOTIFY chosenRowChanged)

public:
    using Clock = std::function<QDateTime()>;

    /// The settings and the context must outlive this object. The clock serves the cut-off of old
    /// bills.
    HistoryView(UserSettings& userSettings, NSManagedObjectContext& viewContext,
        Clock clock = &QDateTime::currentDateTime, QObject* parent = nullptr);
    ~HistoryView() override;

    [[nodiscard]] SavedBills* items() { return &m_items; }

    [[nodiscard]] bool isEditing() const { return m_isEditing; }
    /// Marks do not outlast the edit mode.
    void setIsEditing(bool isEditing);

    /// Shows the other amount in every row, from now on.
    Q_INVOKABLE void toggleColumn();

    /// Deletes the records at those rows and saves once. A save that fails stops the process.
    void deleteItems(const QList<int>& offsets);
    /// Deletes one row, such as one that was swiped aside. A row that is gone is none.
    Q_INVOKABLE void deleteRow(int row);
    Q_INVOKABLE void deleteMarked();
    /// Deletes the marked rows, or that row where none is marked.
    Q_INVOKABLE void deleteByKey(int row);
    /// In the edit mode marks the row for deletion or takes the mark off, else opens the bill. A
    /// row that is gone, but is still seen fading away, is none.
    Q_INVOKABLE void pressRow(int row);

    /// Opens the page of a bill.
    void choose(int row);
    /// Closes it.
    Q_INVOKABLE void unchoose();
    /// Opens the page of a bill and asks for its new description. A page that was opened for this
    /// closes with the dialog. Does nothing in the edit mode.
    Q_INVOKABLE void renameRow(int row);
    [[nodiscard]] bool showRename() const { return m_showRename; }
    void setShowRename(bool show);
    /// Asks for the chosen bill's new description, starting with the old one.
    Q_INVOKABLE void askForDescription();
    /// Stores the typed description, "Bill" where it is empty. A save that fails is ignored: the
    /// change stays in the context.
    Q_INVOKABLE void rename();

    /// Copies the chosen bill's inputs into the settings and dismisses the screen. The results are
    /// computed afresh there, with the percentages of today.
    Q_INVOKABLE void useThisBill();
    void useThisBill(const Item& item);

    /// Deletes the bills older than six months, in the next turn of the event loop. A failure is
    /// only said by a diagnostic line. A calendar without that date stops the process.
    Q_INVOKABLE void deleteOldBills();
    /// Deletes every bill before it returns. A failure is only said by a diagnostic line.
    Q_INVOKABLE void deleteAllBills();

    [[nodiscard]] QString billDescription() const { return m_billDescription.text(); }
    /// Takes what was typed, unless it is too long: then descriptionNotice says so.
    void setBillDescription(const QString& description);
    [[nodiscard]] QString descriptionNotice() const { return m_billDescription.notice(); }

    [[nodiscard]] QString currencySymbolText() const;
    [[nodiscard]] QString otherColumn() const;
    [[nodiscard]] QString areYouSure() const;
    [[nodiscard]] DetailView* detail() const { return m_detail.get(); }
    /// The description, "Bill" where the record has none.
    [[nodiscard]] QString detailTitle() const;
    [[nodiscard]] int chosenRow() const { return m_chosen.isValid() ? m_chosen.row() : -1; }

Q_SIGNALS:
    /// The screen is to be closed.
    void dismissed();
    void isEditingChanged();
    void promptToDeleteChanged();
    void promptToDeleteOldChanged();
    void showUseThisBillChanged();
    void showRenameChanged();
    void billDescriptionChanged();
    void otherColumnChanged();
    void detailChanged();
    void detailTitleChanged();
    void chosenRowChanged();

private:
    void followRows();
    void followReset();
    void show(std::unique_ptr<DetailView> detail);
    [[nodiscard]] static Result<void> deleteBills(
        NSManagedObjectContext& context, const NSFetchRequest& request);

    NSManagedObjectContext& m_viewContext;
    UserSettings& m_userSettings;
    Clock m_clock;

    // Held for the screen's interface: nothing reads these, and no bill is ever deleted by itself.
    [[maybe_unused]] GlobalModel& m_global = GlobalModel::shared();
    [[maybe_unused]] Qt::ApplicationState m_scenePhase = Qt::ApplicationInactive;
    [[maybe_unused]] Qt::ScreenOrientation m_orientation = Qt::PrimaryOrientation;
    [[maybe_unused]] bool m_autoDelete = false;
    [[maybe_unused]] double m_stackWidth = 0.0;

    bool m_isEditing = false;
    bool m_promptToDelete = false;
    bool m_promptToDeleteOld = false;
    bool m_showUseThisBill = false;
    bool m_showRename = false;
    bool m_closesAfterRename = false;
    DescriptionBuffer m_billDescription;
    QString m_offeredDescription; // that the dialog was opened with
    SavedBills m_items;
    QPersistentModelIndex m_chosen;
    std::unique_ptr<DetailView> m_detail;
};
