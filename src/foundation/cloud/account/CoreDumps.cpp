#include "CoreDumps.h"

#include "Diagnostics.h"

#include <QFile>

#include <mutex>

namespace mirror {

namespace {

/// Of the bits in core(5): anonymous memory, private and shared, on small pages and on huge ones.
constexpr uint ownMemory = 0x01 | 0x02 | 0x20 | 0x40;

bool clearOwnMemory()
{
    QFile file(QStringLiteral("/proc/self/coredump_filter"));
    // Unbuffered: the kernel takes a number in one piece.
    if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        return false;
    bool isNumber = false;
    const uint filter = file.readLine(64).trimmed().toUInt(&isNumber, 16);
    const QByteArray cleared = "0x" + QByteArray::number(filter & ~ownMemory, 16);
    return isNumber && file.seek(0) && file.write(cleared) == cleared.size();
}

} // namespace

void keepMemoryOutOfCoreDumps()
{
    static std::once_flag once;
    std::call_once(once, [] {
        if (!clearOwnMemory())
            printDiagnostic("A core dump of this process may hold passwords.");
    });
}

} // namespace mirror
