#include "SettingsView.h"

#include "Bundle.h"
#include "CKContainer.h"
#include "Diagnostics.h"
#include "Formatting.h"
#include "NSUbiquitousKeyValueStore.h"
#include "Version.h"
#include "WebPage.h"

namespace {

void deleteZone()
{
    const CKRecordZoneID zone { QStringLiteral("com.apple.coredata.cloudkit.zone") };
    CKContainer::defaultContainer().privateCloudDatabase().deleteRecordZone(
        zone, [](const std::optional<CKError>& error) {
            if (error)
                printDiagnostic("deleting zone error " + error->localizedDescription.toStdString());
        });
}

} // namespace

SettingsView::SettingsView(UserSettings& user, bool refreshInfo, SyncChoice sync, QObject* parent)
    : QObject(parent)
    , m_refreshInfo(refreshInfo)
    , m_user(user)
    , m_sync(std::move(sync))
{
    connect(&user, &UserSettings::showCurrencyChanged, this, &SettingsView::showCurrencyChanged);
    connect(&user, &UserSettings::highlightSumsChanged, this, &SettingsView::highlightSumsChanged);
    connect(&user, &UserSettings::serviceGoodChanged, this, &SettingsView::goodTextChanged);
    connect(
        &user, &UserSettings::serviceExcellentChanged, this, &SettingsView::excellentTextChanged);
    connect(&user, &UserSettings::themeChanged, this, &SettingsView::themeChanged);
    // Queued: the setter notifies before it saves, and the theme is read from what was saved.
    connect(
        &user, &UserSettings::themeChanged, this, [this] { m_utilities.overrideDisplayMode(); },
        Qt::QueuedConnection);
}

void SettingsView::appear()
{
    setICloud(m_sync());
    const auto repaired = [](qint64 stored, qint64 standard) {
        return static_cast<double>(stored > 0 ? stored : standard);
    };
    setSGood(repaired(m_user.serviceGood(), defServiceGood));
    setSExcellent(repaired(m_user.serviceExcellent(), defServiceExcellent));
}

void SettingsView::disappear()
{
    m_refreshInfo = !m_refreshInfo;
    Q_EMIT refreshInfoChanged(m_refreshInfo);
}

void SettingsView::help() { openWebPage(m_global.websiteHelp); }

void SettingsView::setICloud(bool iCloud)
{
    if (iCloud == m_iCloud)
        return;
    m_iCloud = iCloud;
    Q_EMIT iCloudChanged();
    NSUbiquitousKeyValueStore::defaultStore().setBool(iCloud, QStringLiteral("icloud_sync"));
    store::updateContainer(iCloud);
    if (!iCloud)
        deleteZone();
}

void SettingsView::setSGood(double place)
{
    if (place == m_sGood)
        return;
    m_sGood = place;
    m_user.setServiceGood(wholeNumber(place));
    Q_EMIT sGoodChanged();
}

void SettingsView::setSExcellent(double place)
{
    if (place == m_sExcellent)
        return;
    m_sExcellent = place;
    m_user.setServiceExcellent(wholeNumber(place));
    Q_EMIT sExcellentChanged();
}

int SettingsView::theme() const
{
    const qint64 theme = m_user.theme();
    return theme >= 0 && theme <= 2 ? static_cast<int>(theme) : -1;
}

QString SettingsView::currencyLabel() const
{
    return tr("Currency symbol %1").arg(currencySymbol());
}

QString SettingsView::versionText() const { return version(Bundle::main()); }
