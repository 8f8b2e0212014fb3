#include "Diagnostics.h"
#include "NSFetchedResultsController.h"
#include "NSPersistentContainer.h"
#include "RawStore.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <array>
#include <fstream>
#include <unistd.h>

// Each pair of benchmarks does the same work, once through the store and once in raw SQLite.

namespace {

constexpr int manyBills = 100000;
constexpr int allBills = 1000000;

std::shared_ptr<NSManagedObjectModel> itemModel()
{
    static const auto model
        = *NSManagedObjectModel::load(QUrl::fromLocalFile(QStringLiteral(PROGRAM_MODEL)));
    return model;
}

std::unique_ptr<NSPersistentContainer> openStore(const QString& file)
{
    auto container = std::make_unique<NSPersistentContainer>(QStringLiteral("Bench"), itemModel());
    NSPersistentStoreDescription& description = container->persistentStoreDescriptions().front();
    description.setURL(QUrl::fromLocalFile(file));
    description.setOption(true, NSPersistentHistoryTrackingKey);
    container->loadPersistentStores([](const auto&, const auto& error) {
        if (error)
            fatalError(error->toString().toStdString());
    });
    return container;
}

void mustSave(NSManagedObjectContext& context)
{
    if (const auto saved = context.save(); !saved)
        fatalError(saved.error().toString().toStdString());
}

/// A file for one benchmark, empty but for the tables.
class BenchFile {
public:
    BenchFile() { (void)openStore(path()); }
    explicit BenchFile(const BenchFile& original) { QFile::copy(original.path(), path()); }
    BenchFile& operator=(const BenchFile&) = delete;

    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("b.sqlite")); }
    [[nodiscard]] std::string raw() const { return path().toStdString(); }

private:
    QTemporaryDir m_folder;
};

std::vector<RawBill> bills(int count)
{
    std::vector<RawBill> result;
    result.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        result.push_back(billNumber(i));
    return result;
}

const BenchFile& filledFile(int count)
{
    static std::map<int, BenchFile> files;
    const auto known = files.find(count);
    if (known != files.end())
        return known->second;
    BenchFile& file = files[count];
    RawStore raw(file.raw());
    std::vector<RawBill> some; // few at a time, so that memory tells of the store alone
    for (int i = 0; i < count; ++i) {
        some.push_back(billNumber(i));
        if (some.size() == 10000 || i + 1 == count)
            raw.insert(std::exchange(some, {}));
    }
    raw.checkpoint();
    return file;
}

struct Attributes {
    int bill, everyone, people, ref, roundshare, roundtip, service, share, timestamp, tip, total;
};

constexpr Attributes item { 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10 };

NSManagedObjectContext::Object addBill(NSManagedObjectContext& context, const RawBill& bill)
{
    static const QString entity = QStringLiteral("Item");
    auto object = context.insertNewObject(entity);
    object->setAttribute(item.bill, bill.bill);
    object->setAttribute(item.everyone, bill.everyone);
    object->setAttribute(item.people, bill.people);
    object->setAttribute(item.ref, QString::fromStdString(bill.ref));
    object->setAttribute(item.roundshare, bill.roundShare);
    object->setAttribute(item.roundtip, bill.roundTip);
    object->setAttribute(item.service, bill.service);
    object->setAttribute(item.share, bill.share);
    object->setAttribute(item.timestamp, QDateTime::fromMSecsSinceEpoch(bill.stamp, Qt::UTC));
    object->setAttribute(item.tip, bill.tip);
    object->setAttribute(item.total, bill.total);
    return object;
}

NSFetchRequest newestFirst()
{
    NSFetchRequest request { QStringLiteral("Item"), {}, {} };
    request.sortDescriptors
        = { { QStringLiteral("timestamp"), SortDescriptor::Order::Descending } };
    return request;
}

void insertOneRaw(benchmark::State& state)
{
    const BenchFile file;
    RawStore raw(file.raw());
    std::int64_t number = 0;
    while (state.KeepRunning())
        raw.insert({ billNumber(number++) });
}

void insertOneStore(benchmark::State& state)
{
    const BenchFile file;
    const auto container = openStore(file.path());
    std::int64_t number = 0;
    while (state.KeepRunning()) {
        addBill(container->viewContext(), billNumber(number++));
        mustSave(container->viewContext());
    }
}

void insertManyRaw(benchmark::State& state)
{
    const auto wanted = bills(manyBills);
    while (state.KeepRunning()) {
        state.PauseTiming();
        const BenchFile file;
        auto raw = std::make_unique<RawStore>(file.raw());
        state.ResumeTiming();
        raw->insert(wanted);
        state.PauseTiming();
        raw.reset();
        state.ResumeTiming();
    }
}

void insertManyStore(benchmark::State& state)
{
    const auto wanted = bills(manyBills);
    while (state.KeepRunning()) {
        state.PauseTiming();
        const BenchFile file;
        auto container = openStore(file.path());
        state.ResumeTiming();
        for (const RawBill& bill : wanted)
            addBill(container->viewContext(), bill);
        mustSave(container->viewContext());
        state.PauseTiming();
        container.reset();
        state.ResumeTiming();
    }
}

void fetchManyRaw(benchmark::State& state)
{
    RawStore raw(filledFile(manyBills).raw());
    while (state.KeepRunning()) {
        double sum = 0;
        for (const RawBill& bill : raw.fetchAll())
            sum += bill.bill + bill.share + bill.tip + bill.total + bill.people + bill.service
                + bill.everyone + bill.roundShare + bill.roundTip + static_cast<double>(bill.stamp)
                + static_cast<double>(bill.ref.size());
        benchmark::DoNotOptimize(sum);
    }
}

double sumOf(const NSManagedObject& bill)
{
    const auto number = [&](int index) { return std::get<double>(bill.attribute(index)); };
    const auto flag = [&](int index) { return std::get<bool>(bill.attribute(index)) ? 1 : 0; };
    const auto count = [&](int index) { return std::get<qint32>(bill.attribute(index)); };
    return number(item.bill) + number(item.share) + number(item.tip) + number(item.total)
        + count(item.people) + count(item.service) + flag(item.everyone) + flag(item.roundshare)
        + flag(item.roundtip)
        + static_cast<double>(
            std::get<QDateTime>(bill.attribute(item.timestamp)).toMSecsSinceEpoch())
        + static_cast<double>(std::get<QString>(bill.attribute(item.ref)).size());
}

void fetchManyStore(benchmark::State& state)
{
    const auto container = openStore(filledFile(manyBills).path());
    while (state.KeepRunning()) {
        double sum = 0;
        const auto fetched = container->viewContext().fetch({ QStringLiteral("Item"), {}, {} });
        for (const auto& bill : *fetched)
            sum += sumOf(*bill);
        benchmark::DoNotOptimize(sum);
    }
}

void deleteHalfRaw(benchmark::State& state)
{
    while (state.KeepRunning()) {
        state.PauseTiming();
        const BenchFile file(filledFile(allBills));
        auto raw = std::make_unique<RawStore>(file.raw());
        state.ResumeTiming();
        raw->deleteBefore(billNumber(allBills / 2).stamp);
        state.PauseTiming();
        raw.reset();
        state.ResumeTiming();
    }
}

void completeList(const NSFetchedResultsController& list)
{
    while (!list.isComplete())
        QCoreApplication::processEvents();
}

void deleteHalf(NSManagedObjectContext& context)
{
    NSFetchRequest request = newestFirst();
    request.predicate = Predicate { QStringLiteral("timestamp"), Predicate::Comparison::LessThan,
        QDateTime::fromMSecsSinceEpoch(billNumber(allBills / 2).stamp, Qt::UTC) };
    NSBatchDeleteRequest deletion(request);
    deletion.resultType = NSBatchDeleteRequestResultType::resultTypeObjectIDs;
    auto result = context.execute(deletion);
    NSManagedObjectContext::mergeChanges(
        { { NSDeletedObjectsKey,
            std::get<std::vector<NSManagedObjectID>>(std::move(result->result)) } },
        { &context });
}

void deleteHalfStore(benchmark::State& state)
{
    while (state.KeepRunning()) {
        state.PauseTiming();
        const BenchFile file(filledFile(allBills));
        auto container = openStore(file.path());
        auto list
            = std::make_unique<NSFetchedResultsController>(newestFirst(), container->viewContext());
        (void)list->performFetch();
        completeList(*list);
        state.ResumeTiming();
        deleteHalf(container->viewContext());
        state.PauseTiming();
        if (list->rowCount() != allBills / 2)
            fatalError("the list did not follow the deletion");
        list.reset();
        container.reset();
        state.ResumeTiming();
    }
}

/// Resident memory of the process, in KiB.
double residentKiB()
{
    std::ifstream statm("/proc/self/statm");
    double pages = 0;
    double resident = 0;
    statm >> pages >> resident;
    return resident * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1024;
}

void openLongList(benchmark::State& state)
{
    const auto container = openStore(filledFile(allBills).path());
    static const double before = residentKiB(); // of the first run: later ones use its memory again
    while (state.KeepRunning()) {
        NSFetchedResultsController list(newestFirst(), container->viewContext());
        (void)list.performFetch();
        for (int row = 0; row < 30; ++row)
            benchmark::DoNotOptimize(list.object(row)->attribute(item.total));
        state.PauseTiming();
        completeList(list);
        state.counters["grownKiB"] = residentKiB() - before;
        state.ResumeTiming();
    }
}

void lastRowOfALongListAtOnce(benchmark::State& state)
{
    const auto container = openStore(filledFile(allBills).path());
    while (state.KeepRunning()) {
        NSFetchedResultsController list(newestFirst(), container->viewContext());
        (void)list.performFetch();
        benchmark::DoNotOptimize(list.object(allBills - 1)->attribute(item.total));
    }
}

enum class Edit { Insert, Rename, Delete };

void editLongList(benchmark::State& state, Edit edit)
{
    const BenchFile file(filledFile(allBills));
    const auto container = openStore(file.path());
    NSManagedObjectContext& context = container->viewContext();
    NSFetchedResultsController list(newestFirst(), context);
    (void)list.performFetch();
    completeList(list);
    std::int64_t number = allBills;
    while (state.KeepRunning()) {
        if (edit == Edit::Insert)
            addBill(context, billNumber(number));
        else if (edit == Edit::Rename)
            list.object(1000)->setAttribute(item.ref, QString::number(number));
        else
            context.deleteObject(*list.object(1000));
        mustSave(context);
        ++number;
    }
}

void scrollLongList(benchmark::State& state)
{
    const auto container = openStore(filledFile(allBills).path());
    NSFetchedResultsController list(newestFirst(), container->viewContext());
    (void)list.performFetch();
    completeList(list);
    int row = 0;
    while (state.KeepRunning()) { // a jump of the scroll bar: thirty rows somewhere else
        row = (row + 77777) % (allBills - 30);
        for (int i = 0; i < 30; ++i)
            benchmark::DoNotOptimize(list.object(row + i)->attribute(item.total));
    }
}

BENCHMARK(insertOneRaw)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(insertOneStore)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(insertManyRaw)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
BENCHMARK(insertManyStore)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
BENCHMARK(fetchManyRaw)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(fetchManyStore)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(deleteHalfRaw)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(deleteHalfStore)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(openLongList)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(lastRowOfALongListAtOnce)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(scrollLongList)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(editLongList, insert, Edit::Insert)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(editLongList, rename, Edit::Rename)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(editLongList, remove, Edit::Delete)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
