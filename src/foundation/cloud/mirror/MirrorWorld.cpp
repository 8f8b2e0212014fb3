#include "MirrorWorld.h"

namespace mirror {

FileError localFailure()
{
    return { FileError::Kind::LocalFile, 0, std::nullopt,
        QStringLiteral("What is remembered of the mirror could not be read or written.") };
}

FileError notUnderstood(const QString& sentence)
{
    return { FileError::Kind::NotUnderstood, 0, std::nullopt, sentence };
}

bool isAbsent(const FileError& error)
{
    return error.kind == FileError::Kind::NotFound || error.kind == FileError::Kind::Conflict;
}

std::chrono::milliseconds randomDelay(const MirrorWorld& world, std::chrono::milliseconds limit)
{
    return std::chrono::milliseconds(world.random() % (quint64(limit.count()) + 1));
}

Outcome<MirrorMemory> memoryOf(LocalMirror& local)
{
    LocalTransaction reading(local);
    MirrorMemory known = local.memory();
    if (!reading.commit())
        return localFailure();
    return known;
}

} // namespace mirror
