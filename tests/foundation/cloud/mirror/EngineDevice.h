#pragma once

#include "MemoryFileStore.h"
#include "MemoryMirror.h"
#include "MirrorEngine.h"
#include "MirrorFixture.h"

/// The collections of the devices below.
[[nodiscard]] const mirror::MirrorFolders& deviceFolders();

/// A device that is nothing but an engine and its memory, and on which nothing is put off at
/// random.
class EngineDevice {
public:
    explicit EngineDevice(std::shared_ptr<mirror::MemoryFiles> files,
        const QString& account = QStringLiteral("someone"));

    /// Another one on the same memory, as after a start.
    [[nodiscard]] mirror::MirrorEngine engineFor(const QString& account);

    /// Stops the test program where that fails.
    void save(const mirror::Record& record);
    /// As many syncs, a while apart.
    mirror::SyncReport syncs(int count, std::chrono::milliseconds pause);
    [[nodiscard]] QString epochFolder();
    [[nodiscard]] std::set<QUuid> ids() const;

    mirror::WallTime now { std::chrono::milliseconds(1'763'690'400'000) };
    quint64 drawn = 42; ///< the number that was drawn last
    mirror::MemoryMirror local;
    mirror::MemoryFileStore store;

    mirror::MirrorEngine engine;
};

/// A short record; the number makes its identity.
[[nodiscard]] mirror::Record note(quint32 number);

/// Puts a file under the name of its bytes, and returns its path.
QString addFile(mirror::MemoryFiles& files, const QString& folder, const QByteArray& bytes);

/// How many requests the device makes in the action.
template <class Action> qsizetype requestsIn(EngineDevice& device, Action action)
{
    const qsizetype before = device.store.requests().size();
    action();
    return device.store.requests().size() - before;
}
