// Writes the seeds of each fuzzer into a folder of its own, below the one that is given.

#include "FuzzSeeds.h"

#include <QDir>

#include <cstdio>

namespace {

bool write(const QDir& folder, const QByteArrayList& seeds)
{
    if (!folder.mkpath(QStringLiteral(".")))
        return false;
    for (qsizetype i = 0; i < seeds.size(); ++i) {
        QFile file(folder.filePath(QStringLiteral("seed-%1").arg(i)));
        if (!file.open(QIODevice::WriteOnly) || file.write(seeds[i]) != seeds[i].size()
            || !file.flush())
            return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: fuzz_seeds folder\n", stderr);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    const bool isWritten = write(folder.filePath(QStringLiteral("records")), recordFileSeeds())
        && write(folder.filePath(QStringLiteral("values")), keyValueFileSeeds())
        && write(folder.filePath(QStringLiteral("listing")), listingSeeds());
    return isWritten ? 0 : 1;
}
