#pragma once

#include "AmountStyle.h"

#include <QObject>

class UserDefaults;

// Segment indices of the service picker.
inline constexpr qint64 segServicePoor = 0; ///< never a tip
inline constexpr qint64 segServiceGood = 1;
inline constexpr qint64 segServiceExcellent = 2;

inline constexpr qint64 minPeople = 2; ///< people after a bill is cleared
inline constexpr qint64 defServiceGood = 5; ///< whole percent
inline constexpr qint64 defServiceExcellent = 10; ///< whole percent

/// The user's preferences and the bill being worked on, mirrored key by key into the defaults
/// store.
///
/// Every setter stores the value, notifies and then saves all thirteen keys, also where the value
/// is the one it had. Values are taken as they are: the screens keep them in range.
class UserSettings : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool firstRun READ firstRun WRITE setFirstRun NOTIFY firstRunChanged)
    Q_PROPERTY(qint64 theme READ theme WRITE setTheme NOTIFY themeChanged)
    Q_PROPERTY(bool roundShare READ roundShare WRITE setRoundShare NOTIFY roundShareChanged)
    Q_PROPERTY(bool roundTip READ roundTip WRITE setRoundTip NOTIFY roundTipChanged)
    Q_PROPERTY(bool tipFromEveryone READ tipFromEveryone WRITE setTipFromEveryone NOTIFY
            tipFromEveryoneChanged)
    Q_PROPERTY(double bill READ bill WRITE setBill NOTIFY billChanged)
    Q_PROPERTY(qint64 people READ people WRITE setPeople NOTIFY peopleChanged)
    Q_PROPERTY(qint64 service READ service WRITE setService NOTIFY serviceChanged)
    Q_PROPERTY(qint64 serviceGood READ serviceGood WRITE setServiceGood NOTIFY serviceGoodChanged)
    Q_PROPERTY(qint64 serviceExcellent READ serviceExcellent WRITE setServiceExcellent NOTIFY
            serviceExcellentChanged)
    Q_PROPERTY(bool showCurrency READ showCurrency WRITE setShowCurrency NOTIFY showCurrencyChanged)
    Q_PROPERTY(bool showShareInSavedBillsList READ showShareInSavedBillsList WRITE
            setShowShareInSavedBillsList NOTIFY showShareInSavedBillsListChanged)
    Q_PROPERTY(
        bool highlightSums READ highlightSums WRITE setHighlightSums NOTIFY highlightSumsChanged)

public:
    /// The one instance that the screens share, on the user's own defaults store. Never torn down.
    static UserSettings& shared();

    /// Loads every field from the store, or, where the store has no "havePrefs", marks it and takes
    /// the first-run values. The store must outlive this object.
    explicit UserSettings(UserDefaults& store, QObject* parent = nullptr);

    /// Loads from the user's own defaults store: a short-lived reader.
    UserSettings();

    /// Writes all thirteen fields to the store, which carries them to disk in its own time.
    void save();

    [[nodiscard]] bool firstRun() const { return m_firstRun; }
    /// 0 follows the system, 1 is light, 2 is dark.
    [[nodiscard]] qint64 theme() const { return m_theme; }
    [[nodiscard]] bool roundShare() const { return m_roundShare; }
    [[nodiscard]] bool roundTip() const { return m_roundTip; }
    [[nodiscard]] bool tipFromEveryone() const { return m_tipFromEveryone; }
    /// The bill as typed, in currency units.
    [[nodiscard]] double bill() const { return m_bill; }
    [[nodiscard]] qint64 people() const { return m_people; }
    /// A segment index of the service picker.
    [[nodiscard]] qint64 service() const { return m_service; }
    /// Whole percent.
    [[nodiscard]] qint64 serviceGood() const { return m_serviceGood; }
    /// Whole percent.
    [[nodiscard]] qint64 serviceExcellent() const { return m_serviceExcellent; }
    [[nodiscard]] bool showCurrency() const { return m_showCurrency; }
    /// How amounts are shown, after showCurrency.
    [[nodiscard]] AmountStyle amountStyle() const
    {
        return m_showCurrency ? AmountStyle::WithCurrency : AmountStyle::WithSeparator;
    }
    [[nodiscard]] bool showShareInSavedBillsList() const { return m_showShareInSavedBillsList; }
    [[nodiscard]] bool highlightSums() const { return m_highlightSums; }

    void setFirstRun(bool value);
    void setTheme(qint64 value);
    void setRoundShare(bool value);
    void setRoundTip(bool value);
    void setTipFromEveryone(bool value);
    void setBill(double value);
    void setPeople(qint64 value);
    void setService(qint64 value);
    void setServiceGood(qint64 value);
    void setServiceExcellent(qint64 value);
    void setShowCurrency(bool value);
    void setShowShareInSavedBillsList(bool value);
    void setHighlightSums(bool value);

Q_SIGNALS:
    void firstRunChanged();
    void themeChanged();
    void roundShareChanged();
    void roundTipChanged();
    void tipFromEveryoneChanged();
    void billChanged();
    void peopleChanged();
    void serviceChanged();
    void serviceGoodChanged();
    void serviceExcellentChanged();
    void showCurrencyChanged();
    void showShareInSavedBillsListChanged();
    void highlightSumsChanged();

private:
    void loadFirstRunValues();
    void load();
    template <typename Value>
    void assign(Value& field, Value value, void (UserSettings::*changed)());

    UserDefaults& m_store;
    bool m_firstRun = false;
    qint64 m_theme = 0;
    bool m_roundShare = false;
    bool m_roundTip = false;
    bool m_tipFromEveryone = false;
    double m_bill = 0.0;
    qint64 m_people = 0;
    qint64 m_service = 0;
    qint64 m_serviceGood = 0;
    qint64 m_serviceExcellent = 0;
    bool m_showCurrency = false;
    bool m_showShareInSavedBillsList = false;
    bool m_highlightSums = false;
};
