#include "KeyValueFile.h"
#include "MirrorFixture.h"

#include <QTest>

using namespace mirror;

namespace {

KeyValueState said(qint64 milliseconds, quint64 device, const SmallValue& value)
{
    return { timeAt(milliseconds), DeviceId(device), value, {} };
}

KeyValue sync(const KeyValueState& state) { return { Text::of(u"icloud_sync"), state }; }

QByteArray headerOf(qint64 lines) { return headerLine({ "vexilo-kv", lines, someOrigin() }); }

} // namespace

class KeyValueFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFileIsAHeaderAndALineForEachEntry()
    {
        const std::vector<KeyValue> entries { sync(said(1000, 0x0123456789abcdef, true)) };

        const FilePart part = writeKeyValues(entries, someOrigin());

        QCOMPARE(part.taken, 1U);
        QCOMPARE(part.bytes,
            QByteArray(
                R"({"fmt":"vexilo-kv","v":1,"n":1,"dev":"0123456789abcdef","w":"fedcba9876543210"})"
                "\n"
                R"({"id":"icloud_sync","v":true,"h":"0000000001000-00000","d":"0123456789abcdef"})"
                "\n"));
    }

    void aFileIsReadAsItWasWritten()
    {
        const std::vector<KeyValue> entries { sync(said(1, 2, true)), sync(said(1, 2, false)),
            sync(said(1, 2, SmallValue())), sync(said(1, 2, Text::of(u"\u00e9\"\n"))),
            sync(said(1, 2, std::numeric_limits<qint64>::min())) };

        const auto result = readKeyValues(writeKeyValues(entries, someOrigin()).bytes);

        QVERIFY(result.entries == entries);
        QVERIFY(result.status == FileStatus::Understood);
    }

    void aRangeIsSplitIntoPartsThatFit()
    {
        const std::vector<KeyValue> entries(100, sync(said(1, 2, true)));

        const FilePart part = writeKeyValues(entries, someOrigin(), 1000);

        QVERIFY(part.bytes.size() <= 1000 && part.taken > 1 && part.taken < 100);
        QCOMPARE(readKeyValues(part.bytes).entries.size(), part.taken);
    }

    void theLargerStays_data()
    {
        QTest::addColumn<KeyValueState>("winner");
        QTest::addColumn<KeyValueState>("loser");

        QTest::newRow("later") << said(6, 0, false) << said(5, 9, true);
        QTest::newRow("device of two at once") << said(5, 8, false) << said(5, 7, true);
        QTest::newRow("value of two clones") << said(5, 7, true) << said(5, 7, false);
        QTest::newRow("null is least") << said(5, 7, false) << said(5, 7, SmallValue());
        QTest::newRow("integer after boolean") << said(5, 7, qint64(-1)) << said(5, 7, true);
        QTest::newRow("text after integer") << said(5, 7, Text()) << said(5, 7, qint64(1));
    }
    void theLargerStays()
    {
        QFETCH(const KeyValueState, winner);
        QFETCH(const KeyValueState, loser);

        QVERIFY(join(winner, loser) == winner);
        QVERIFY(join(loser, winner) == winner);
    }

    void theLargestEntryFitsIntoALine()
    {
        QByteArrayList members;
        for (char name = 'A'; name < 'A' + char(UnknownKeys::MaxCount); ++name)
            members += QByteArray("\"") + name + "\":\""
                + QByteArray(UnknownKeys::MaxMemberBytes - 6, 'x') + "\"";
        const Text escapes = Text::of(QString(Text::MaxBytes, QChar(1)));
        KeyValue entry { escapes, said(1, 2, escapes) };
        entry.state.unknown = unknownKeys("{" + members.join(',') + "}");

        const QByteArray line = keyValueLine(entry);

        QVERIFY(line.size() <= JsonLimits::LineBytes);
        QVERIFY(readKeyValueLine(line) == entry);
    }

    void aBadLineIsSkippedAndCounted_data()
    {
        QTest::addColumn<QByteArray>("line");
        const QByteArray good = keyValueLine(sync(said(1, 2, true)));
        const auto with = [&good](const char* before, const char* after) {
            return QByteArray(good).replace(before, after);
        };

        QTest::newRow("no JSON") << QByteArray("nonsense");
        QTest::newRow("no key") << with("\"id\"", "\"ID\"");
        QTest::newRow("number for a key") << with("\"icloud_sync\"", "1");
        QTest::newRow("no value") << with("\"v\"", "\"V\"");
        QTest::newRow("fraction") << with("true", "1.5");
        QTest::newRow("array") << with("true", "[]");
        QTest::newRow("beyond 64 bits") << with("true", "9223372036854775808");
        QTest::newRow("no time") << with("\"h\"", "\"H\"");
        QTest::newRow("time of another form") << with("-00000", "-0000");
        QTest::newRow("no device") << with("\"d\"", "\"D\"");
        QTest::newRow("short device") << with("0000000000000002", "2");
    }
    void aBadLineIsSkippedAndCounted()
    {
        QFETCH(const QByteArray, line);
        const QByteArray good = keyValueLine(sync(said(1, 2, true)));

        const auto result = readKeyValues(fileOf(headerOf(3), { good, line, good }));

        QCOMPARE(result.entries.size(), 2U);
        QCOMPARE(result.badLines, 1);
        QVERIFY(result.status == FileStatus::Partial);
    }

    void aFileOfRecordsIsNotUnderstood()
    {
        QVERIFY(readKeyValues(fileOf(noteHeader(0), {})).status == FileStatus::NotUnderstood);
        QVERIFY(readKeyValues(fileOf(headerOf(0), {})).status == FileStatus::Understood);
    }

    void whatANewerVersionAddedIsWrittenBack()
    {
        KeyValue entry = sync(said(1, 2, true));
        entry.state.unknown = unknownKeys(R"({"why":["because"]})");

        QVERIFY(readKeyValueLine(keyValueLine(entry)) == entry);
    }

    void aTruncatedFileHasOnlyEntriesOfTheWholeOne()
    {
        const std::vector<KeyValue> entries(3, sync(said(1, 2, true)));
        const QByteArray file = writeKeyValues(entries, someOrigin()).bytes;

        for (qsizetype size = 0; size < file.size(); ++size) {
            const auto result = readKeyValues(file.first(size));

            QVERIFY(result.status != FileStatus::Understood);
            for (const KeyValue& entry : result.entries)
                QVERIFY(entry == entries.front());
        }
    }
};

QTEST_APPLESS_MAIN(KeyValueFileTest)
#include "KeyValueFileTest.moc"
