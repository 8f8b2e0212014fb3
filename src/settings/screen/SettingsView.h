#pragma once

#include "GlobalModel.h"
#include "PersistenceController.h"
#include "UserSettings.h"
#include "Utilities.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <functional>

/// State and actions of the settings screen. Everything goes straight into the settings, which save
/// themselves; nothing is left to save when the screen closes. Made anew each time it is opened.
class SettingsView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes the screen's state.")
    Q_PROPERTY(bool iCloud READ iCloud WRITE setICloud NOTIFY iCloudChanged)
    Q_PROPERTY(bool showCurrency READ showCurrency WRITE setShowCurrency NOTIFY showCurrencyChanged)
    Q_PROPERTY(
        bool highlightSums READ highlightSums WRITE setHighlightSums NOTIFY highlightSumsChanged)
    /// The sliders' places, in percent.
    Q_PROPERTY(double sGood READ sGood WRITE setSGood NOTIFY sGoodChanged)
    Q_PROPERTY(double sExcellent READ sExcellent WRITE setSExcellent NOTIFY sExcellentChanged)
    /// The percentages that are stored, as the screen shows them.
    Q_PROPERTY(QString goodText READ goodText NOTIFY goodTextChanged)
    Q_PROPERTY(QString excellentText READ excellentText NOTIFY excellentTextChanged)
    /// 0 is the system's theme, 1 the light one, 2 the dark one; -1 for a value that is none.
    Q_PROPERTY(int theme READ theme WRITE setTheme NOTIFY themeChanged)
    Q_PROPERTY(QString currencyLabel READ currencyLabel CONSTANT)
    Q_PROPERTY(QString copyright READ copyright CONSTANT)
    Q_PROPERTY(QString version READ versionText CONSTANT)

public:
    /// Says whether saved bills are mirrored.
    using SyncChoice = std::function<bool()>;

    /// The settings must outlive this object. The flag is the presenting screen's.
    SettingsView(UserSettings& user, bool refreshInfo, SyncChoice sync = &store::sync,
        QObject* parent = nullptr);

    /// To be called when the screen is shown: takes over whether bills are mirrored, and places the
    /// sliders. A stored percentage of 0 or less is repaired here, and nowhere else.
    Q_INVOKABLE void appear();
    /// To be called when the screen is gone, however it was closed: flips the presenter's flag.
    Q_INVOKABLE void disappear();
    /// Opens the help page in the user's browser.
    Q_INVOKABLE void help();

    [[nodiscard]] bool iCloud() const { return m_iCloud; }
    /// Stores the choice for all devices of the user, and switches the store. Switched off, the
    /// saved bills are deleted from the cloud, which goes on behind the screen and tells only the
    /// diagnostic log where it fails.
    void setICloud(bool iCloud);

    [[nodiscard]] bool showCurrency() const { return m_user.showCurrency(); }
    void setShowCurrency(bool show) { m_user.setShowCurrency(show); }
    [[nodiscard]] bool highlightSums() const { return m_user.highlightSums(); }
    void setHighlightSums(bool highlight) { m_user.setHighlightSums(highlight); }

    [[nodiscard]] double sGood() const { return m_sGood; }
    /// Stores the place, cut to whole percent. One that is no such number stops the process.
    void setSGood(double place);
    [[nodiscard]] double sExcellent() const { return m_sExcellent; }
    /// As setSGood().
    void setSExcellent(double place);
    [[nodiscard]] QString goodText() const { return QString::number(m_user.serviceGood()); }
    [[nodiscard]] QString excellentText() const
    {
        return QString::number(m_user.serviceExcellent());
    }

    [[nodiscard]] int theme() const;
    void setTheme(int theme) { m_user.setTheme(theme); }

    [[nodiscard]] QString currencyLabel() const;
    [[nodiscard]] QString copyright() const { return m_global.copyrightStr; }
    [[nodiscard]] QString versionText() const;

Q_SIGNALS:
    void iCloudChanged();
    void showCurrencyChanged();
    void highlightSumsChanged();
    void sGoodChanged();
    void sExcellentChanged();
    void goodTextChanged();
    void excellentTextChanged();
    void themeChanged();
    /// The presenting screen is to take this value for its flag.
    void refreshInfoChanged(bool refreshInfo);

private:
    bool m_refreshInfo;
    Utilities m_utilities;
    UserSettings& m_user;
    GlobalModel& m_global = GlobalModel::shared();
    SyncChoice m_sync;
    double m_sGood = 0.0;
    double m_sExcellent = 0.0;
    bool m_iCloud = false;

    // Held for the screen's interface: nothing reads these.
    [[maybe_unused]] Qt::ApplicationState m_scenePhase = Qt::ApplicationInactive;
    [[maybe_unused]] bool m_showPopover = false;
    [[maybe_unused]] qint64 m_step = 1;
};
