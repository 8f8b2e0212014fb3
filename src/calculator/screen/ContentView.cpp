#include "ContentView.h"

#include "CoreDataManager.h"
#include "Diagnostics.h"
#include "Formatting.h"
#include "Palette.h"
#include "RootViewController.h"
#include "SplitSummary.h"
#include "UIActivityViewController.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QWindow>

#include <limits>
#include <memory>
#include <utility>

namespace {

constexpr QSize minimumWindowSize(500, 800);

QString tooLarge() { return ContentView::tr("Amount too large"); }

qint32 narrowed(qint64 value)
{
    if (value < std::numeric_limits<qint32>::min() || value > std::numeric_limits<qint32>::max())
        fatalError("A 32-bit integer cannot hold " + std::to_string(value));
    return static_cast<qint32>(value);
}

} // namespace

ContentView::ContentView(
    UserSettings& userSettings, NSManagedObjectContext& viewContext, QObject* parent)
    : QObject(parent)
    , m_userSettings(userSettings)
    , m_viewContext(viewContext)
    , m_global(GlobalModel::shared())
{
    connect(&userSettings, &UserSettings::billChanged, this, &ContentView::showStoredBill);
    connect(&userSettings, &UserSettings::billChanged, this, &ContentView::calculate);
    connect(&userSettings, &UserSettings::serviceChanged, this, &ContentView::calculate);
    connect(&userSettings, &UserSettings::tipFromEveryoneChanged, this, &ContentView::calculate);
    connect(&userSettings, &UserSettings::roundTipChanged, this, &ContentView::calculate);
    connect(&userSettings, &UserSettings::roundShareChanged, this, &ContentView::calculate);
    connect(this, &ContentView::refreshInfoChanged, this, &ContentView::calculate);
    connect(&userSettings, &UserSettings::peopleChanged, this, &ContentView::peopleTextChanged);
    connect(
        &userSettings, &UserSettings::serviceChanged, this, &ContentView::serviceSegmentChanged);
    // The same figures in another dress.
    connect(&userSettings, &UserSettings::showCurrencyChanged, this, &ContentView::resultsChanged);
    connect(
        &userSettings, &UserSettings::highlightSumsChanged, this, &ContentView::panelColorsChanged);
    showStoredBill();
}

void ContentView::appear()
{
    tidyCatalystWindow();
    if (m_userSettings.people() < 1)
        m_userSettings.setPeople(1);
    calculate();
}

void ContentView::tidyCatalystWindow()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow* window : windows)
        window->setMinimumSize(minimumWindowSize);
}

void ContentView::calculate()
{
    const std::optional<Split> results = split(SplitInputs::fromSettings(m_userSettings));
    m_results = results.value_or(Split());
    m_resultsNotice = results ? QString() : tooLarge();
    setPeopleNotice({});
    Q_EMIT resultsChanged();
}

QString ContentView::shareString() const
{
    return splitSummary(
        SplitInputs::fromSettings(m_userSettings), m_results, m_userSettings.amountStyle());
}

void ContentView::billEdited(const QString& text)
{
    if (m_fieldShowsBillText && text == m_billText)
        return;
    m_fieldShowsBillText = false;

    const std::optional<double> bill = amountFromText(text);
    if (!bill) {
        setBillNotice(tr("Not an amount"));
        return;
    }
    SplitInputs inputs = SplitInputs::fromSettings(m_userSettings);
    inputs.bill = *bill;
    if (!split(inputs)) {
        setBillNotice(tooLarge());
        return;
    }
    setBillNotice({});
    m_billIsBeingEdited = true;
    m_userSettings.setBill(*bill);
    m_billIsBeingEdited = false;
}

void ContentView::billEditingFinished()
{
    setBillNotice({});
    showStoredBill();
}

void ContentView::showStoredBill()
{
    if (m_billIsBeingEdited)
        return;
    setBillNotice({});
    m_billText = textFromAmount(m_userSettings.bill());
    m_fieldShowsBillText = true;
    Q_EMIT billTextChanged();
}

void ContentView::setBillNotice(const QString& notice)
{
    if (m_billNotice == notice)
        return;
    m_billNotice = notice;
    Q_EMIT billNoticeChanged();
}

void ContentView::setPeopleNotice(const QString& notice)
{
    if (m_peopleNotice == notice)
        return;
    m_peopleNotice = notice;
    Q_EMIT peopleNoticeChanged();
}

void ContentView::fewerPeople()
{
    if (m_userSettings.people() > 1)
        m_userSettings.setPeople(m_userSettings.people() - 1);
    calculate();
}

void ContentView::morePeople()
{
    const qint64 people = m_userSettings.people();
    const bool canGrow = people < std::numeric_limits<qint64>::max();
    if (canGrow)
        m_userSettings.setPeople(people + 1);
    calculate();
    if (!canGrow)
        setPeopleNotice(tooLarge());
}

void ContentView::clear()
{
    m_userSettings.setBill(0.0);
    m_userSettings.setPeople(minPeople);
    m_userSettings.setService(segServicePoor);
    m_userSettings.setTipFromEveryone(false);
    m_userSettings.setRoundTip(false);
    m_userSettings.setRoundShare(false);
}

void ContentView::copy()
{
    if (!hasResults())
        return;
    QGuiApplication::clipboard()->setText(shareString());
    setShowCopied(true);
}

void ContentView::setShowCopied(bool show)
{
    m_showCopied = show;
    Q_EMIT showCopiedChanged();
}

void ContentView::setRefreshInfo(bool refreshInfo)
{
    if (refreshInfo == m_refreshInfo)
        return;
    m_refreshInfo = refreshInfo;
    Q_EMIT refreshInfoChanged();
}

void ContentView::shareButton()
{
    if (!hasResults())
        return;
    auto controller
        = std::make_unique<UIActivityViewController>(ActivityItems { { .text = shareString(),
            .excerpt = ActivityItem::Excerpt {
                .title = tr("Copy share per person"), .text = shareText() } } });
    const QWindowList windows = QGuiApplication::topLevelWindows();
    if (!windows.isEmpty())
        RootViewController::of(*windows.first()).present(std::move(controller));
}

void ContentView::save()
{
    if (!hasResults())
        return;
    m_billDescription.reset();
    Q_EMIT billDescriptionChanged();
    m_saveDialog = !m_saveDialog;
    Q_EMIT saveDialogChanged();
}

void ContentView::setBillDescription(const QString& description)
{
    if (m_billDescription.edit(description))
        Q_EMIT billDescriptionChanged();
}

void ContentView::saveThis()
{
    m_billDescription.reset(m_billDescription.textOrDefault());
    Q_EMIT billDescriptionChanged();
    const std::shared_ptr<Item> item = Item::make(m_viewContext);
    fill(*item);
    // What another program changed in the store meanwhile does not keep a new bill out of it.
    const Result<void> saved = store::saveDespiteConflicts(m_viewContext);
    if (saved)
        return;
    m_viewContext.deleteObject(*item);
    m_saveFailure = saved.error().description.translated();
    m_showSaveFailed = true;
    Q_EMIT showSaveFailedChanged();
}

void ContentView::fill(Item& item) const
{
    item.setTimestamp(QDateTime::currentDateTimeUtc());
    item.setRef(m_billDescription.text());
    item.setBill(m_userSettings.bill());
    item.setPeople(narrowed(m_userSettings.people()));
    item.setService(narrowed(m_userSettings.service()));
    item.setTotal(m_results.grandTotal);
    item.setShare(m_results.sumShare);
    item.setTip(m_results.sumTip);
    item.setEveryone(m_userSettings.tipFromEveryone());
    item.setRoundtip(m_userSettings.roundTip());
    item.setRoundshare(m_userSettings.roundShare());
}

QColor ContentView::getLinearColor1() const
{
    if (m_userSettings.highlightSums())
        return panelPink(contrastFrom(m_highContrast));
    return m_dark ? Qt::black : Qt::white;
}

QColor ContentView::getLinearColor2() const
{
    if (m_userSettings.highlightSums())
        return panelRed(contrastFrom(m_highContrast));
    return m_dark ? Qt::black : Qt::white;
}

QColor ContentView::getForegroundColor() const
{
    return m_userSettings.highlightSums() || m_dark ? Qt::white : Qt::black;
}

QString ContentView::tipLabel() const
{
    return strTip().isEmpty() ? tr("Tip") : tr("Tip %1").arg(strTip());
}

QString ContentView::currencySymbolText() const { return currencySymbol(); }

QString ContentView::peopleText() const { return QString::number(m_userSettings.people()); }

int ContentView::serviceSegment() const
{
    const qint64 service = m_userSettings.service();
    const bool known = service >= segServicePoor && service <= segServiceExcellent;
    return known ? static_cast<int>(service) : -1;
}

void ContentView::setServiceSegment(int segment) { m_userSettings.setService(segment); }

QString ContentView::serviceText() const { return strService(m_userSettings.service()); }

QString ContentView::totalText() const { return amountText(m_results.grandTotal); }

QString ContentView::tipText() const { return amountText(m_results.sumTip); }

QString ContentView::shareText() const { return amountText(m_results.sumShare); }

QString ContentView::amountText(double amount) const
{
    return formattedAmount(amount, m_userSettings.amountStyle());
}
