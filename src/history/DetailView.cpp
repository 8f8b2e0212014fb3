#include "DetailView.h"

#include "Diagnostics.h"
#include "Formatting.h"
#include "NSManagedObjectContext.h"

DetailView::DetailView(
    std::shared_ptr<Item> item, const UserSettings& userSettings, QObject* parent)
    : QObject(parent)
    , m_item(std::move(item))
    , m_userSettings(userSettings)
{
    connect(m_item->managedObjectContext(), &NSManagedObjectContext::objectsDidChange, this,
        &DetailView::changed);
    connect(&userSettings, &UserSettings::showCurrencyChanged, this, &DetailView::changed);
}

QString DetailView::amountText(double amount) const
{
    return formattedAmount(amount, m_userSettings.amountStyle());
}

QString DetailView::service() const { return strService(m_item->service()); }

QString DetailView::everyone() const { return yesOrNo(m_item->everyone()); }

QString DetailView::roundtip() const { return yesOrNo(m_item->roundtip()); }

QString DetailView::roundshare() const { return yesOrNo(m_item->roundshare()); }

QString DetailView::savedOn() const
{
    const std::optional<QDateTime> stamp = m_item->timestamp();
    // Deleted meanwhile, here or by another program: the page is about to go.
    if (!stamp && (m_item->isFault() || m_item->isDeleted()))
        return {};
    if (!stamp)
        fatalError("Unexpectedly found nil while unwrapping an Optional value");
    return tr("Saved on: %1 at %2").arg(dateStr(stamp), timeStr(stamp));
}
