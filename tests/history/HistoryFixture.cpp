#include "HistoryFixture.h"

#include <QAbstractItemModel>

namespace {

void mustSave(NSManagedObjectContext& context)
{
    const Result<void> saved = context.save();
    if (!saved)
        qFatal("Not saved: %s", qPrintable(saved.error().toString()));
}

std::vector<std::shared_ptr<Item>> billsOf(NSPersistentContainer& container)
{
    const auto found = container.viewContext().fetch(Item::fetchRequest());
    if (!found)
        qFatal("Not read: %s", qPrintable(found.error().toString()));
    std::vector<std::shared_ptr<Item>> items;
    for (const auto& object : *found)
        items.push_back(std::static_pointer_cast<Item>(object));
    return items;
}

std::shared_ptr<Item> billOf(NSPersistentContainer& container, const QString& ref)
{
    for (const std::shared_ptr<Item>& item : billsOf(container)) {
        if (item->ref() == ref)
            return item;
    }
    qFatal("No bill %s", qPrintable(ref));
}

} // namespace

std::shared_ptr<Item> HistoryFixture::addBill(const QString& ref, const QDateTime& stamp)
{
    std::shared_ptr<Item> item = Item::make(context());
    item->setRef(ref);
    item->setTimestamp(stamp);
    item->setBill(100.0);
    item->setPeople(2);
    item->setService(1);
    item->setTotal(110.0);
    item->setShare(55.0);
    item->setTip(5.0);
    item->setEveryone(true);
    save();
    return item;
}

void HistoryFixture::addBills(const QStringList& refs)
{
    for (int i = 0; i < refs.size(); ++i)
        (void)addBill(refs.at(i), pieDay().addSecs(qint64(-60) * i));
}

void HistoryFixture::save() { mustSave(context()); }

void HistoryFixture::renameElsewhere(const QString& ref, const QString& newRef) const
{
    const auto other = otherProgram();
    billOf(*other, ref)->setRef(newRef);
    mustSave(other->viewContext());
}

void HistoryFixture::deleteElsewhere(const QString& ref) const
{
    const auto other = otherProgram();
    other->viewContext().deleteObject(*billOf(*other, ref));
    mustSave(other->viewContext());
}

QStringList HistoryFixture::storedRefs() const
{
    const auto other = otherProgram();
    QStringList refs;
    for (const std::shared_ptr<Item>& item : billsOf(*other))
        refs.append(item->ref().value_or(QStringLiteral("-")));
    return refs;
}

QDateTime pieDay(int hour, int minute) { return { QDate(2026, 3, 14), QTime(hour, minute) }; }

QVariant shown(const QAbstractItemModel& list, int row, const char* role)
{
    const int number = list.roleNames().key(role, -1);
    if (number < 0)
        qFatal("No such role: %s", role);
    return list.data(list.index(row, 0), number);
}

QStringList shownRefs(const QAbstractItemModel& list)
{
    QStringList refs;
    for (int row = 0; row < list.rowCount(); ++row)
        refs.append(shown(list, row, "ref").toString());
    return refs;
}
