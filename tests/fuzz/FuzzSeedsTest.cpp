#include "FuzzSeeds.h"
#include "FuzzClaims.h"
#include "KeyValueFile.h"
#include "ListingReader.h"
#include "MirrorFixture.h"

#include <QTest>

using namespace mirror;

namespace {

using Claims = const char* (*)(const QByteArray&);

void check(Claims broken, const QByteArrayList& seeds)
{
    for (const QByteArray& seed : seeds)
        QVERIFY2(!broken(seed), QByteArray(seed.left(200) + ": " + broken(seed)).constData());
}

template <class Read> qsizetype countUnderstood(const QByteArrayList& seeds, Read read)
{
    return std::ranges::count(seeds, FileStatus::Understood, read);
}

} // namespace

/// The fuzzers' claims without a fuzzer.
class FuzzSeedsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void claimsHoldOfRecordFiles() { check(brokenRecordFileClaim, recordFileSeeds()); }

    void claimsHoldOfKeyValueFiles() { check(brokenKeyValueFileClaim, keyValueFileSeeds()); }

    void claimsHoldOfListings() { check(brokenListingClaim, listingSeeds()); }

    void someSeedsAreUnderstoodAndSomeAreNot()
    {
        const auto records = countUnderstood(recordFileSeeds(),
            [](const QByteArray& seed) { return readRecords(seed, noteSchema()).status; });
        const auto values = countUnderstood(
            keyValueFileSeeds(), [](const QByteArray& seed) { return readKeyValues(seed).status; });

        QVERIFY(records > 5 && records < recordFileSeeds().size() / 2);
        QVERIFY(values > 3 && values < keyValueFileSeeds().size() / 2);
    }
};

QTEST_APPLESS_MAIN(FuzzSeedsTest)
#include "FuzzSeedsTest.moc"
