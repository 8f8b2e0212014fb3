#pragma once

#include "DescriptionBuffer.h"
#include "GlobalModel.h"
#include "Split.h"
#include "UserSettings.h"

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

class Item;
class NSManagedObjectContext;

/// State and actions of the calculator screen. The inputs live in the settings, the results here:
/// they are computed anew whenever an input changes.
class ContentView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes the screen's state.")
    Q_PROPERTY(UserSettings* userSettings READ userSettings CONSTANT)
    Q_PROPERTY(GlobalModel* global READ global CONSTANT)

    Q_PROPERTY(bool showSettings MEMBER m_showSettings NOTIFY showSettingsChanged)
    Q_PROPERTY(bool showHistory MEMBER m_showHistory NOTIFY showHistoryChanged)
    Q_PROPERTY(bool showCopied READ showCopied WRITE setShowCopied NOTIFY showCopiedChanged)
    Q_PROPERTY(bool showClear MEMBER m_showClear NOTIFY showClearChanged)
    Q_PROPERTY(bool saveDialog MEMBER m_saveDialog NOTIFY saveDialogChanged)
    Q_PROPERTY(bool showSaveFailed MEMBER m_showSaveFailed NOTIFY showSaveFailedChanged)
    /// Why the bill could not be saved.
    Q_PROPERTY(QString saveFailure READ saveFailure NOTIFY showSaveFailedChanged)
    Q_PROPERTY(QString billDescription READ billDescription WRITE setBillDescription NOTIFY
            billDescriptionChanged)
    Q_PROPERTY(QString descriptionNotice READ descriptionNotice NOTIFY billDescriptionChanged)
    /// Flipped by what wants the results computed anew.
    Q_PROPERTY(bool refreshInfo READ refreshInfo WRITE setRefreshInfo NOTIFY refreshInfoChanged)
    Q_PROPERTY(bool isTextFieldFocused MEMBER m_isTextFieldFocused NOTIFY isTextFieldFocusedChanged)

    /// The window's colour scheme, from the view.
    Q_PROPERTY(bool dark MEMBER m_dark NOTIFY panelColorsChanged)
    /// Whether the window is drawn in high contrast, from the view.
    Q_PROPERTY(bool highContrast MEMBER m_highContrast NOTIFY panelColorsChanged)

    Q_PROPERTY(QColor linearColor1 READ getLinearColor1 NOTIFY panelColorsChanged)
    Q_PROPERTY(QColor linearColor2 READ getLinearColor2 NOTIFY panelColorsChanged)
    Q_PROPERTY(QColor foregroundColor READ getForegroundColor NOTIFY panelColorsChanged)
    Q_PROPERTY(QString billText READ billText NOTIFY billTextChanged)
    Q_PROPERTY(QString billNotice READ billNotice NOTIFY billNoticeChanged)
    Q_PROPERTY(QString currencySymbol READ currencySymbolText CONSTANT)
    Q_PROPERTY(QString peopleText READ peopleText NOTIFY peopleTextChanged)
    Q_PROPERTY(QString peopleNotice READ peopleNotice NOTIFY peopleNoticeChanged)
    /// The chosen segment of the service picker; -1 for a level that it does not have.
    Q_PROPERTY(
        int serviceSegment READ serviceSegment WRITE setServiceSegment NOTIFY serviceSegmentChanged)
    Q_PROPERTY(QString serviceText READ serviceText NOTIFY serviceSegmentChanged)
    Q_PROPERTY(QString tipLabel READ tipLabel NOTIFY resultsChanged)
    Q_PROPERTY(QString totalText READ totalText NOTIFY resultsChanged)
    Q_PROPERTY(QString tipText READ tipText NOTIFY resultsChanged)
    Q_PROPERTY(QString shareText READ shareText NOTIFY resultsChanged)
    Q_PROPERTY(QString resultsNotice READ resultsNotice NOTIFY resultsChanged)
    Q_PROPERTY(bool hasResults READ hasResults NOTIFY resultsChanged)

public:
    /// The settings and the context, in which bills are saved, must outlive this object.
    ContentView(
        UserSettings& userSettings, NSManagedObjectContext& viewContext, QObject* parent = nullptr);

    /// To be called when the screen is first shown: sets the windows' least size, raises a stored
    /// count of people below 1 to 1, and computes the results.
    void appear();

    /// Computes the results from the settings. Inputs whose figures are too large to be cut to
    /// cents give zeros and a notice.
    void calculate();

    /// The results as a plain text for other programs.
    [[nodiscard]] QString shareString() const;

    /// Reads what stands in the bill field, after every change of its text. A text that is no
    /// amount, or one too large to split, leaves the stored bill as it was and sets billNotice.
    Q_INVOKABLE void billEdited(const QString& text);
    /// Shows the stored bill in the field again.
    Q_INVOKABLE void billEditingFinished();
    Q_INVOKABLE void fewerPeople();
    Q_INVOKABLE void morePeople();
    Q_INVOKABLE void clear();
    /// Puts the summary on the clipboard and shows the notice. Does nothing without results.
    Q_INVOKABLE void copy();
    /// Opens the share sheet with the summary over the first window. Does nothing without results
    /// and without a window; a window without a root view controller stops the process.
    Q_INVOKABLE void shareButton();

    /// Opens the save dialog, its description empty. Does nothing without results.
    Q_INVOKABLE void save();
    /// Saves the inputs and the results as they stand under the typed description, or under "Bill"
    /// where nothing was typed. Where that fails, showSaveFailed is set and nothing else changed.
    /// A count of people or a service that does not fit 32 bits stops the process.
    Q_INVOKABLE void saveThis();

    /// The results panel: top and bottom of its gradient, and its text.
    [[nodiscard]] QColor getLinearColor1() const;
    [[nodiscard]] QColor getLinearColor2() const;
    [[nodiscard]] QColor getForegroundColor() const;

    [[nodiscard]] bool showSettings() const { return m_showSettings; }
    [[nodiscard]] bool showHistory() const { return m_showHistory; }
    [[nodiscard]] bool showCopied() const { return m_showCopied; }
    void setShowCopied(bool show);

    [[nodiscard]] bool refreshInfo() const { return m_refreshInfo; }
    void setRefreshInfo(bool refreshInfo);

    [[nodiscard]] QString saveFailure() const { return m_saveFailure; }
    [[nodiscard]] QString billDescription() const { return m_billDescription.text(); }
    /// Takes what was typed, unless it is too long: then descriptionNotice says so.
    void setBillDescription(const QString& description);
    [[nodiscard]] QString descriptionNotice() const { return m_billDescription.notice(); }

    [[nodiscard]] UserSettings* userSettings() const { return &m_userSettings; }
    [[nodiscard]] GlobalModel* global() const { return &m_global; }

    [[nodiscard]] double sumTotal() const { return m_results.sumTotal; }
    [[nodiscard]] double sumTip() const { return m_results.sumTip; }
    [[nodiscard]] double grandTotal() const { return m_results.grandTotal; }
    [[nodiscard]] double sumShare() const { return m_results.sumShare; }
    [[nodiscard]] QString strTip() const { return m_results.strTip; }
    /// "Tip", followed by how it is made up where everyone pays it.
    [[nodiscard]] QString tipLabel() const;

    /// What the bill field shows while nobody types in it.
    [[nodiscard]] QString billText() const { return m_billText; }
    /// Why the text in the field is not taken as the bill; empty while it is.
    [[nodiscard]] QString billNotice() const { return m_billNotice; }
    [[nodiscard]] QString currencySymbolText() const;
    [[nodiscard]] QString peopleText() const;
    /// Why another person was not taken; empty once anything has changed.
    [[nodiscard]] QString peopleNotice() const { return m_peopleNotice; }
    [[nodiscard]] int serviceSegment() const;
    void setServiceSegment(int segment);
    [[nodiscard]] QString serviceText() const;
    [[nodiscard]] QString totalText() const;
    [[nodiscard]] QString tipText() const;
    [[nodiscard]] QString shareText() const;
    /// Why there are no results; empty while there are.
    [[nodiscard]] QString resultsNotice() const { return m_resultsNotice; }
    [[nodiscard]] bool hasResults() const { return m_resultsNotice.isEmpty(); }

Q_SIGNALS:
    void showSettingsChanged();
    void showHistoryChanged();
    void showCopiedChanged();
    void saveDialogChanged();
    void showSaveFailedChanged();
    void billDescriptionChanged();
    void showClearChanged();
    void refreshInfoChanged();
    void isTextFieldFocusedChanged();
    void panelColorsChanged();
    void billTextChanged();
    void billNoticeChanged();
    void peopleTextChanged();
    void peopleNoticeChanged();
    void serviceSegmentChanged();
    void resultsChanged();

private:
    void tidyCatalystWindow();
    void fill(Item& item) const;
    void showStoredBill();
    void setBillNotice(const QString& notice);
    void setPeopleNotice(const QString& notice);
    [[nodiscard]] QString amountText(double amount) const;

    UserSettings& m_userSettings;
    NSManagedObjectContext& m_viewContext;
    GlobalModel& m_global;

    bool m_showSettings = false;
    bool m_showHistory = false;
    bool m_showCopied = false;
    bool m_saveDialog = false;
    DescriptionBuffer m_billDescription;
    bool m_showSaveFailed = false;
    QString m_saveFailure;
    bool m_showClear = false;
    bool m_refreshInfo = false;
    bool m_isTextFieldFocused = false;
    bool m_dark = false;
    bool m_highContrast = false;
    // Held for the screen's interface: every use of the count goes to the settings.
    [[maybe_unused]] qint64 m_people = minPeople;

    Split m_results;
    QString m_resultsNotice;
    QString m_billText;
    QString m_billNotice;
    QString m_peopleNotice;
    bool m_billIsBeingEdited = false;
    // The text that the field shows by our own doing: reading it back would cut the stored bill to
    // the digits shown.
    bool m_fieldShowsBillText = true;
};
