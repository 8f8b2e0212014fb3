#include "UserSettings.h"

#include "UserDefaults.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 preferencesPresent = 100;

} // namespace

UserSettings& UserSettings::shared()
{
    // Never torn down: screens may read it until the process ends.
    static auto* const instance = new UserSettings();
    return *instance;
}

UserSettings::UserSettings()
    : UserSettings(UserDefaults::standard())
{
}

UserSettings::UserSettings(UserDefaults& store, QObject* parent)
    : QObject(parent)
    , m_store(store)
{
    if (m_store.integerForKey(u"havePrefs"_s) == 0) {
        m_store.setValue(u"havePrefs"_s, preferencesPresent);
        loadFirstRunValues();
    } else {
        load();
    }
}

void UserSettings::loadFirstRunValues()
{
    m_firstRun = true;
    m_theme = 0;
    m_bill = 0.0;
    m_people = minPeople;
    m_service = segServiceGood;
    m_roundShare = false;
    m_roundTip = false;
    m_tipFromEveryone = false;
    m_serviceGood = defServiceGood;
    m_serviceExcellent = defServiceExcellent;
    m_showCurrency = true;
    m_showShareInSavedBillsList = true;
    m_highlightSums = true;
}

void UserSettings::load()
{
    m_firstRun = m_store.boolForKey(u"firstRun"_s);
    m_theme = m_store.integerForKey(u"theme"_s);
    m_bill = m_store.doubleForKey(u"bill"_s);
    m_people = m_store.integerForKey(u"people"_s);
    m_service = m_store.integerForKey(u"service"_s);
    m_roundShare = m_store.boolForKey(u"roundShare"_s);
    m_roundTip = m_store.boolForKey(u"roundTip"_s);
    m_tipFromEveryone = m_store.boolForKey(u"tipFromEveryone"_s);
    m_serviceGood = m_store.integerForKey(u"serviceGood"_s);
    m_serviceExcellent = m_store.integerForKey(u"serviceExcellent"_s);
    m_showCurrency = m_store.boolForKey(u"showCurrency"_s);
    m_showShareInSavedBillsList = m_store.boolForKey(u"showShareInSavedBillsList"_s);
    m_highlightSums = m_store.boolForKey(u"highlightSums"_s);
}

void UserSettings::save()
{
    m_store.setValue(u"firstRun"_s, m_firstRun);
    m_store.setValue(u"theme"_s, m_theme);
    m_store.setValue(u"roundTip"_s, m_roundTip);
    m_store.setValue(u"tipFromEveryone"_s, m_tipFromEveryone);
    m_store.setValue(u"roundShare"_s, m_roundShare);
    m_store.setValue(u"bill"_s, m_bill);
    m_store.setValue(u"people"_s, m_people);
    m_store.setValue(u"service"_s, m_service);
    m_store.setValue(u"serviceGood"_s, m_serviceGood);
    m_store.setValue(u"serviceExcellent"_s, m_serviceExcellent);
    m_store.setValue(u"showCurrency"_s, m_showCurrency);
    m_store.setValue(u"showShareInSavedBillsList"_s, m_showShareInSavedBillsList);
    m_store.setValue(u"highlightSums"_s, m_highlightSums);
}

template <typename Value>
void UserSettings::assign(Value& field, Value value, void (UserSettings::*changed)())
{
    field = value;
    Q_EMIT(this->*changed)();
    save();
}

void UserSettings::setFirstRun(bool value)
{
    assign(m_firstRun, value, &UserSettings::firstRunChanged);
}

void UserSettings::setTheme(qint64 value) { assign(m_theme, value, &UserSettings::themeChanged); }

void UserSettings::setRoundShare(bool value)
{
    assign(m_roundShare, value, &UserSettings::roundShareChanged);
}

void UserSettings::setRoundTip(bool value)
{
    assign(m_roundTip, value, &UserSettings::roundTipChanged);
}

void UserSettings::setTipFromEveryone(bool value)
{
    assign(m_tipFromEveryone, value, &UserSettings::tipFromEveryoneChanged);
}

void UserSettings::setBill(double value) { assign(m_bill, value, &UserSettings::billChanged); }

void UserSettings::setPeople(qint64 value)
{
    assign(m_people, value, &UserSettings::peopleChanged);
}

void UserSettings::setService(qint64 value)
{
    assign(m_service, value, &UserSettings::serviceChanged);
}

void UserSettings::setServiceGood(qint64 value)
{
    assign(m_serviceGood, value, &UserSettings::serviceGoodChanged);
}

void UserSettings::setServiceExcellent(qint64 value)
{
    assign(m_serviceExcellent, value, &UserSettings::serviceExcellentChanged);
}

void UserSettings::setShowCurrency(bool value)
{
    assign(m_showCurrency, value, &UserSettings::showCurrencyChanged);
}

void UserSettings::setShowShareInSavedBillsList(bool value)
{
    assign(m_showShareInSavedBillsList, value, &UserSettings::showShareInSavedBillsListChanged);
}

void UserSettings::setHighlightSums(bool value)
{
    assign(m_highlightSums, value, &UserSettings::highlightSumsChanged);
}
