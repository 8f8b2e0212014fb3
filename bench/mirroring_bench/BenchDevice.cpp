#include "BenchDevice.h"

#include "ApacheServer.h"
#include "RemoteChangeWatch.h"

#include <QElapsedTimer>
#include <QFile>

#include <malloc.h>

namespace {

/// Of this process, in bytes; "VmRSS" or "VmHWM".
qint64 memory(const QByteArray& name)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        qFatal("The memory of the process cannot be read.");
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(QByteArray(name + ':')))
            return line.mid(name.size() + 1).simplified().split(' ').first().toLongLong() * 1024;
    }
    qFatal("The memory of the process is unknown.");
}

/// From now on the peak is that of what follows.
void forgetPeak()
{
    malloc_trim(0);
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    if (!clear.open(QIODevice::WriteOnly) || clear.write("5") != 1)
        qFatal("The peak of the memory cannot be reset.");
}

CloudSetup setupFor(const QString& file, std::shared_ptr<const NSManagedObjectModel> model)
{
    return { file, std::move(model), QStringLiteral("Item"), QStringLiteral("ref"), "vexilo-bills",
        QStringLiteral("bench"), "A benchmark's.\n", "bench", {} };
}

} // namespace

BenchDevice::BenchDevice(const QUrl& root)
    : m_model(*NSManagedObjectModel::load(QUrl::fromLocalFile(QStringLiteral(PROGRAM_MODEL))))
    , m_files(root, ApacheServer::user(), ApacheServer::password())
    , m_container(std::make_unique<NSPersistentContainer>(QStringLiteral("Vexilo"), m_model))
{
    NSPersistentStoreDescription& description = m_container->persistentStoreDescriptions().front();
    description.setURL(QUrl::fromLocalFile(file()));
    description.setOption(true, NSPersistentHistoryTrackingKey);
    m_container->loadPersistentStores([](const auto&, const auto& error) {
        if (error)
            qFatal("%s", qPrintable(error->toString()));
    });
    auto session = mirror::MirrorSession::open(setupFor(file(), m_model), m_files);
    if (!session)
        qFatal("%s", qPrintable(session.error().toString()));
    m_session = std::move(*session);
    m_session->useAccount(QStringLiteral("bench"));
    if (!m_session->engine().switchOn())
        qFatal("Mirroring cannot be switched on.");
}

void BenchDevice::saveBills(int count)
{
    NSManagedObjectContext& context = m_container->viewContext();
    for (int i = 0; i < count; ++i) {
        const auto bill = context.insertNewObject(QStringLiteral("Item"));
        const double amount = 10 + i * 0.37;
        bill->setValue(amount, QStringLiteral("bill"));
        bill->setValue(amount * 0.1, QStringLiteral("tip"));
        bill->setValue(amount * 1.1, QStringLiteral("total"));
        bill->setValue(amount * 1.1 / 3, QStringLiteral("share"));
        bill->setValue(2 + i % 7, QStringLiteral("people"));
        bill->setValue(i % 3, QStringLiteral("service"));
        bill->setValue(
            QDateTime::currentDateTimeUtc().addSecs(-60 * i), QStringLiteral("timestamp"));
        bill->setValue(QStringLiteral("Dinner number %1").arg(i), QStringLiteral("ref"));
    }
    if (const auto saved = context.save(); !saved)
        qFatal("%s", qPrintable(saved.error().toString()));
    context.reset();
}

Cost BenchDevice::sync()
{
    (void)m_files.takeCount();
    forgetPeak();
    const qint64 before = memory("VmRSS");
    QElapsedTimer watch;
    watch.start();
    const mirror::SyncReport report = m_session->engine().sync();
    Cost cost;
    cost.milliseconds = double(watch.nsecsElapsed()) / 1e6;
    if (report.result != mirror::SyncReport::Result::Done)
        qFatal("A sync failed: %s",
            qPrintable(report.error ? report.error->sentence : QStringLiteral("it stopped")));
    cost.requests = m_files.takeCount();
    cost.peakGrowth = memory("VmHWM") - before;
    return cost;
}

qint64 BenchDevice::bills() const
{
    NSFetchRequest request;
    request.entityName = QStringLiteral("Item");
    return *m_container->viewContext().count(request);
}

void BenchDevice::openList()
{
    NSFetchRequest request;
    request.entityName = QStringLiteral("Item");
    request.sortDescriptors
        = { { QStringLiteral("timestamp"), SortDescriptor::Order::Descending } };
    m_container->viewContext().setAutomaticallyMergesChangesFromParent(true);
    m_list = std::make_unique<NSFetchedResultsController>(request, m_container->viewContext());
    if (!m_list->performFetch())
        qFatal("The bills cannot be listed.");
}

double BenchDevice::mergeIntoList()
{
    using Merge = NSPersistentStoreCoordinator::RemoteChanges;
    double longest = 0;
    QElapsedTimer watch;
    for (Merge merge = Merge::MoreToMerge; merge == Merge::MoreToMerge;) {
        watch.start();
        merge = *m_container->persistentStoreCoordinator().mergeRemoteChanges(
            RemoteChangeWatch::ChangesPerSlice);
        longest = std::max(longest, double(watch.nsecsElapsed()) / 1e6);
    }
    if (m_list->rowCount() != bills())
        qFatal("Not all bills are in the list.");
    return longest;
}
