#include "MirrorWorld.h"

namespace mirror {

namespace {

constexpr int Forbidden = 403;

} // namespace

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

bool isAboutOneFile(const FileError& error)
{
    switch (error.kind) {
    case FileError::Kind::Unauthorised:
        return error.status == Forbidden;
    case FileError::Kind::Locked:
    case FileError::Kind::Conflict:
    case FileError::Kind::TooLarge:
    case FileError::Kind::Server:
    case FileError::Kind::Redirect:
    case FileError::Kind::NotUnderstood:
        return true;
    default:
        return false;
    }
}

bool isAsNamed(const Download& download, const FileKey& file)
{
    return download.sha256 == FileName::fromText(file.name).value().sha256;
}

double randomFraction(const MirrorWorld& world) { return double(world.random() % 1001) / 1000; }

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
