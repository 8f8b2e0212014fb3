#pragma once

#include "FileStore.h"
#include "LocalMirror.h"
#include "RecordSchema.h"

#include <functional>

namespace mirror {

/// What the mirror needs of the world; each part outlives it.
struct MirrorWorld {
    FileStore& files;
    LocalMirror& local;
    const RecordSchema& schema;
    std::function<WallTime()> now;
    std::function<quint64()> random; ///< 64 bits, unpredictable for other devices
};

/// The error of a local store that did not take or give something.
[[nodiscard]] FileError localFailure();

/// The error of an answer that cannot be right.
[[nodiscard]] FileError notUnderstood(const QString& sentence);

/// Whether the server says that what was asked for, or the collection around it, is not there.
[[nodiscard]] bool isAbsent(const FileError& error);

/// Whether the server refuses what was asked about one file, while others may be asked about. Who
/// may list a folder and not touch one of its files is not refused himself.
[[nodiscard]] bool isAboutOneFile(const FileError& error);

/// Whether what was fetched of the file is what its name promises.
[[nodiscard]] bool isAsNamed(const Download& download, const FileKey& file);

/// From 0 to 1.
[[nodiscard]] double randomFraction(const MirrorWorld& world);

/// Up to the limit, at random, so that devices do not all do the same at once.
[[nodiscard]] std::chrono::milliseconds randomDelay(
    const MirrorWorld& world, std::chrono::milliseconds limit);

/// What is remembered beside the rows, read in a transaction of its own.
[[nodiscard]] Outcome<MirrorMemory> memoryOf(LocalMirror& local);

/// Calls the action in a transaction of its own.
template <class Action> Outcome<> transact(LocalMirror& local, Action action)
{
    LocalTransaction transaction(local);
    action();
    return transaction.commit() ? Outcome<>() : localFailure();
}

/// Calls the change with what is remembered beside the rows, and remembers what it made of that.
template <class Change> Outcome<> remember(LocalMirror& local, Change change)
{
    return transact(local, [&] {
        MirrorMemory memory = local.memory();
        change(memory);
        local.setMemory(memory);
    });
}

} // namespace mirror
