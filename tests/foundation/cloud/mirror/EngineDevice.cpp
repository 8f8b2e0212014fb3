#include "EngineDevice.h"

using namespace mirror;
using namespace std::chrono_literals;

const MirrorFolders& deviceFolders()
{
    static const MirrorFolders folders { QStringLiteral("org.example.notes/") };
    return folders;
}

EngineDevice::EngineDevice(std::shared_ptr<MemoryFiles> files, const QString& account)
    : store(std::move(files))
    , engine(engineFor(account))
{
}

MirrorEngine EngineDevice::engineFor(const QString& account)
{
    return { { store, local, noteSchema(), [this] { return now; }, [this] { return ++drawn; } },
        { deviceFolders(), account, "Ours.\n", WriterId(7),
            { .files = 4, .bytes = 100'000, .delay = 0ms } } };
}

void EngineDevice::save(const Record& record)
{
    LocalTransaction writing(local);
    local.records().store(record);
    if (!writing.commit())
        qFatal("A record could not be saved.");
}

SyncReport EngineDevice::syncs(int count, std::chrono::milliseconds pause)
{
    SyncReport report;
    for (int i = 0; i < count; ++i) {
        report = engine.sync();
        now += pause;
    }
    return report;
}

QString EngineDevice::epochFolder() { return deviceFolders().epoch(*local.data().memory.epoch); }

std::set<QUuid> EngineDevice::ids() const
{
    std::set<QUuid> ids;
    for (const auto& [id, carried] : local.data().records.rows)
        ids.insert(id);
    return ids;
}

Record note(quint32 number) { return { identity(number), liveNote({}, QStringLiteral("Note")) }; }

QString addFile(MemoryFiles& files, const QString& folder, const QByteArray& bytes)
{
    QString path = folder + FileName::of(FileContent::Records, bytes).toText();
    files.files.insert(path, bytes);
    return path;
}
