#include "KeyValueFile.h"
#include "MirrorGenerators.h"
#include "RecordLine.h"

#include <QTest>

using namespace mirror;

namespace {

/// Whatever a reader takes from bytes is something that can be written, and is then the same.
void checkRecords(const QByteArray& bytes)
{
    for (const Record& record : readRecords(bytes, noteSchema()).records) {
        const QByteArray line = recordLine(record);
        RC_ASSERT(line.size() <= JsonLimits::LineBytes);
        RC_ASSERT(readRecordLine(line, noteSchema()) == record);
    }
}

/// The fast way to read a line never says anything else than the thorough one.
void checkOwnLines(const QByteArray& bytes)
{
    for (const QByteArray& line : bytes.split('\n')) {
        const auto own = readOwnRecordLine(line, noteSchema());
        const auto json = readJsonLine(line);
        RC_ASSERT(!own || (json && readRecord(*json, noteSchema()) == own));
    }
}

void checkKeyValues(const QByteArray& bytes)
{
    for (const KeyValue& entry : readKeyValues(bytes).entries) {
        const QByteArray line = keyValueLine(entry);
        RC_ASSERT(line.size() <= JsonLimits::LineBytes);
        RC_ASSERT(readKeyValueLine(line) == entry);
    }
}

QByteArray someRecordFile()
{
    const auto records = *rc::gen::container<std::vector<Record>>(arbitraryRecord());
    return writeRecords(records, noteSchema(), someOrigin()).bytes;
}

QByteArray someKeyValueFile()
{
    std::vector<KeyValue> entries;
    for (int i = *rc::gen::inRange(0, 5); i > 0; --i)
        entries.push_back({ Text::of(u"key"), *arbitraryKeyValueState() });
    return writeKeyValues(entries, someOrigin()).bytes;
}

/// Bytes overwritten, cut out, doubled or replaced by what means something in a file.
void damage(QByteArray& file)
{
    const auto at = *rc::gen::inRange<qsizetype>(0, file.size() + 1);
    const auto size = *rc::gen::inRange<qsizetype>(0, 20);
    switch (*rc::gen::inRange(0, 4)) {
    case 0:
        file.insert(at, char(*rc::gen::arbitrary<char>()));
        break;
    case 1:
        file.remove(at, size);
        break;
    case 2:
        file.insert(at, file.mid(at, size * 10));
        break;
    default:
        file.replace(at, 1,
            QByteArray(*rc::gen::element("{", "}", "[", "]", "\"", "\\", "\n", ",", ":", "-", "1",
                "\xff", "null", "\\u0000", "\\ud800", "1e999", "00")));
    }
}

QByteArray damaged(QByteArray file)
{
    for (int i = *rc::gen::inRange(1, 4); i > 0; --i)
        damage(file);
    return file;
}

QByteArray anyBytes()
{
    return QByteArray::fromStdString(*rc::gen::container<std::string>(rc::gen::arbitrary<char>()));
}

} // namespace

class DamagedFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatADamagedFileStillSaysCanBeWritten()
    {
        QVERIFY(rc::check([] { checkRecords(damaged(someRecordFile())); }));
        QVERIFY(rc::check([] { checkKeyValues(damaged(someKeyValueFile())); }));
    }

    void aLineIsReadFastAsItIsReadThoroughly()
    {
        QVERIFY(rc::check([] { checkOwnLines(someRecordFile()); }));
        QVERIFY(rc::check([] { checkOwnLines(damaged(someRecordFile())); }));
    }

    void whateverTheBytesAreTheyAreRead()
    {
        QVERIFY(rc::check([] {
            const QByteArray bytes = anyBytes();
            checkRecords(bytes);
            checkKeyValues(bytes);
            checkRecords(noteHeader(3) + '\n' + bytes);
            checkOwnLines(bytes);
        }));
    }

    void aFlippedBitNeverMakesAFileUnreadable()
    {
        const Note note { .amount = 0.1, .stamp = 5, .place = QStringLiteral("\u00e9") };
        const std::vector<Record> records {
            { identity(1), liveNote(note, QStringLiteral("\u00e9")) }, { identity(2), deadNote(5) }
        };
        const QByteArray file = writeRecords(records, noteSchema(), someOrigin()).bytes;

        for (qsizetype i = 0; i < file.size() * 8; ++i) {
            QByteArray flipped = file;
            flipped[i / 8] = char(uchar(flipped[i / 8]) ^ (1U << uint(i % 8)));
            const auto result = readRecords(flipped, noteSchema());

            QVERIFY(result.records.size() <= 2);
            for (const Record& record : result.records)
                QVERIFY(readRecordLine(recordLine(record), noteSchema()) == record);
        }
    }

    void joinsOfWhatWasReadFitIntoALine()
    {
        QVERIFY(rc::check([] {
            const auto left = readRecords(damaged(someRecordFile()), noteSchema()).records;
            const auto right = readRecords(damaged(someRecordFile()), noteSchema()).records;
            for (std::size_t i = 0; i < std::min(left.size(), right.size()); ++i) {
                const Record joined { left[i].id, join(left[i].state, right[i].state) };
                RC_ASSERT(readRecordLine(recordLine(joined), noteSchema()) == joined);
            }
        }));
    }
};

QTEST_APPLESS_MAIN(DamagedFileTest)
#include "DamagedFileTest.moc"
