#include "Diagnostics.h"
#include "Item.h"
#include "PersistenceController.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

// Fills the user's store, as XDG_DATA_HOME names it, with bills of the last years.

namespace {

constexpr int billsOfOneSave = 10000;

void addBill(NSManagedObjectContext& context, int number, const QDateTime& newest)
{
    const auto item = Item::make(context);
    const double amount = 5.0 + number % 9973 / 10.0;
    item->setTimestamp(newest.addSecs(-300LL * number));
    item->setRef(QStringLiteral("Dinner %1").arg(number));
    item->setBill(amount);
    item->setPeople(1 + number % 9);
    item->setService(number % 3);
    item->setTotal(amount * 1.1);
    item->setShare(amount * 1.1 / (1 + number % 9));
    item->setTip(amount * 0.1);
}

void mustSave(NSManagedObjectContext& context)
{
    if (const auto saved = context.save(); !saved)
        fatalError(saved.error().toString().toStdString());
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("Vexilo"));
    QCoreApplication::setOrganizationName(QStringLiteral("Morrowick"));
    const QCoreApplication application(argc, argv);
    const int count = argc == 2 ? std::atoi(argv[1]) : 0;
    if (count <= 0) {
        std::fputs("Usage: fill_bills COUNT\n", stderr);
        return EXIT_FAILURE;
    }
    const auto container = store::setupContainer(false);
    NSManagedObjectContext& context = container->viewContext();
    const QDateTime newest = QDateTime::currentDateTimeUtc();
    for (int number = count - 1; number >= 0; --number) { // the oldest first, as people save them
        addBill(context, number, newest);
        if (number % billsOfOneSave == 0)
            mustSave(context);
    }
    return EXIT_SUCCESS;
}
