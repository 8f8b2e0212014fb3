// Measures the mirroring of ten thousand bills through a server of its own on this machine, beside
// what SQLite and curl need for the same alone. Ends with an error where a limit is exceeded.

#include "ApacheServer.h"
#include "Baseline.h"
#include "BenchDevice.h"
#include "SlowWire.h"

#include <QCoreApplication>
#include <QUuid>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int Bills = 10'000;
constexpr int RowsPerTransaction = 500; // the mirror's own
constexpr int UsualRounds = 5;
constexpr double MostTimesBaseline = 3;
constexpr int MostRequests = 20;
constexpr int MostRequestsForOne = 6;
constexpr qint64 MostListing = 10'000; // bytes
constexpr int SlowWay = 40; // milliseconds
constexpr double MostOverSlowWay = 2'000; // milliseconds
constexpr double MostForSlice = 8 - 2; // milliseconds: a turn takes slices for two, and one more
constexpr qint64 MostGrowth = qint64(16) * 1024 * 1024;

bool isAllWithin = true;

void report(const char* what, double value, const char* unit, double limit)
{
    const bool isWithin = value <= limit;
    isAllWithin = isAllWithin && isWithin;
    std::printf(
        "%-52s %9.1f %-8s limit %9.1f %s\n", what, value, unit, limit, isWithin ? "" : "EXCEEDED");
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

/// A folder of its own for each round.
QUrl newFolder(const QUrl& server)
{
    QUrl folder = server;
    folder.setPath(server.path() + QLatin1Char('/')
        + QUuid::createUuid().toString(QUuid::WithoutBraces) + QLatin1Char('/'));
    makeFolder(folder);
    return folder;
}

QUrl over(const SlowWire& wire, QUrl url)
{
    url.setPort(wire.port());
    return url;
}

struct Round {
    double sqlite = 0; // all in one transaction
    double sqliteSliced = 0; // in the mirror's transactions
    Transfer curl;
    Cost exported;
    Cost imported;
    double slice = 0;
};

Round measure(const QUrl& server)
{
    const QUrl folder = newFolder(server);
    BenchDevice first(folder);
    first.saveBills(Bills);
    Round round;
    round.exported = first.sync();
    const Contents contents = contentsBelow(folder);
    round.curl = transfer(newFolder(server), contents.bytes, contents.files);
    round.sqlite = writeBills(first.file(), Bills);
    round.sqliteSliced = writeBills(first.file(), RowsPerTransaction);
    BenchDevice second(folder);
    second.openList();
    round.imported = second.sync();
    round.slice = second.mergeIntoList();
    if (second.bills() != Bills)
        qFatal("Not all bills arrived.");
    return round;
}

void reportRounds(const QUrl& server, int rounds)
{
    std::vector<double> sqlite;
    std::vector<double> sliced;
    std::vector<double> up;
    std::vector<double> down;
    std::vector<double> exported;
    std::vector<double> imported;
    std::vector<double> exportTimes;
    std::vector<double> importTimes;
    Round last;
    qint64 growth = 0;
    double slice = 0;
    for (int i = 0; i < rounds; ++i) {
        last = measure(server);
        sqlite.push_back(last.sqlite);
        sliced.push_back(last.sqliteSliced);
        up.push_back(last.curl.up);
        down.push_back(last.curl.down);
        exported.push_back(last.exported.milliseconds);
        imported.push_back(last.imported.milliseconds);
        exportTimes.push_back(last.exported.milliseconds / (last.sqliteSliced + last.curl.up));
        importTimes.push_back(last.imported.milliseconds / (last.sqliteSliced + last.curl.down));
        growth = std::max(growth, last.imported.peakGrowth);
        slice = std::max(slice, last.slice);
    }
    std::printf("medians of %d rounds\n", rounds);
    std::printf("SQLite alone, in one transaction     %7.1f ms\n", median(sqlite));
    std::printf("SQLite alone, 500 in a transaction   %7.1f ms\n", median(sliced));
    std::printf(
        "curl, up and down                    %7.1f ms %7.1f ms\n", median(up), median(down));
    std::printf("first export, first import           %7.1f ms %7.1f ms\n", median(exported),
        median(imported));
    report("first export, times SQLite (500) and curl", median(exportTimes), "", MostTimesBaseline);
    report("first import, times SQLite (500) and curl", median(importTimes), "", MostTimesBaseline);
    report("first export", last.exported.requests, "requests", MostRequests);
    report("first import", last.imported.requests, "requests", MostRequests);
    report("memory at its peak during the first import, more by", double(growth) / 1024 / 1024,
        "MiB", double(MostGrowth) / 1024 / 1024);
    report("longest slice of merging it into an open list", slice, "ms", MostForSlice);
}

void reportSlowWay(const QUrl& server)
{
    const SlowWire wire(quint16(server.port()), SlowWay);
    const QUrl folder = newFolder(server);
    BenchDevice first(folder);
    first.saveBills(Bills);
    (void)first.sync();
    BenchDevice far(over(wire, folder));
    report("first import, every way and back taking 40 ms", far.sync().milliseconds, "ms",
        MostOverSlowWay);
    if (far.bills() != Bills)
        qFatal("Not all bills arrived.");

    (void)first.sync();
    report("poll with nothing new", first.sync().requests, "requests", 1);
    report("its answer", double(listingBytes(epochFolder(folder))), "bytes", MostListing);

    first.saveBills(1);
    const Cost there = first.sync();
    const Cost here = far.sync();
    report(
        "one bill, both devices", there.requests + here.requests, "requests", MostRequestsForOne);
    report("one bill, both syncs, one of them over 40 ms", there.milliseconds + here.milliseconds,
        "ms", 1'000);
    if (far.bills() != Bills + 1)
        qFatal("The bill did not arrive.");
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const int rounds = argc > 1 ? QByteArray(argv[1]).toInt() : UsualRounds;
    if (rounds < 1) {
        std::fprintf(stderr, "Usage: mirroring_bench [rounds]\n");
        return EXIT_FAILURE;
    }
    const ApacheServer server;
    reportRounds(server.plainUrl(), rounds);
    reportSlowWay(server.plainUrl());
    return isAllWithin ? EXIT_SUCCESS : EXIT_FAILURE;
}
