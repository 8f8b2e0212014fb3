#include "MirrorFixture.h"
#include "RecordLine.h"

#include <QBuffer>
#include <QTest>

using namespace mirror;

namespace {

std::vector<Record> notes(quint32 count)
{
    std::vector<Record> records;
    for (quint32 i = 0; i < count; ++i)
        records.push_back(
            { identity(i), liveNote({ .amount = i / 7.0 }, QStringLiteral("Dinner")) });
    return records;
}

ReadRecords read(const QByteArray& file) { return readRecords(file, noteSchema()); }

/// A file with that header and a good line.
ReadRecords readWithHeader(const QByteArray& header)
{
    return read(fileOf(header, { recordLine(notes(1).front()) }));
}

/// A file with a good line before and behind that one.
ReadRecords readBetweenGoodLines(const QByteArray& line)
{
    const auto records = notes(2);
    return read(fileOf(noteHeader(3), { recordLine(records[0]), line, recordLine(records[1]) }));
}

QByteArray replaced(const QByteArray& in, const char* before, const char* after)
{
    return QByteArray(in).replace(before, after);
}

/// All parts that writing the records takes, and how many records each has.
std::vector<FilePart> partsOf(std::span<const Record> records, qint64 maxBytes)
{
    std::vector<FilePart> parts;
    while (!records.empty()) {
        parts.push_back(writeRecords(records, noteSchema(), someOrigin(), maxBytes));
        records = records.subspan(parts.back().taken);
    }
    return parts;
}

} // namespace

class RecordFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFileIsAHeaderAndALineForEachRecord()
    {
        const Note note { .amount = 100, .count = 3, .stamp = 1763690400000 };
        const std::vector<Record> records {
            { identity(1), liveNote(note, QStringLiteral("Dinner")) }, { identity(2), deadNote(5) }
        };

        const FilePart part = writeRecords(records, noteSchema(), someOrigin());

        QCOMPARE(part.taken, 2U);
        QCOMPARE(part.bytes,
            QByteArray(
                R"({"fmt":"notes","v":1,"n":2,"dev":"0123456789abcdef","w":"fedcba9876543210"})"
                "\n"
                R"({"id":"00000000-0000-0000-0000-000000000001","c":["0000000001000-00001",)"
                R"({"amount":"100","count":3,"done":false,"place":null,"stamp":1763690400000}],)"
                R"("r":["0000000001000-00002","0123456789abcdef","Dinner"]})"
                "\n"
                R"({"id":"00000000-0000-0000-0000-000000000002","x":1,"h":"0000000000005-00000"})"
                "\n"));
    }

    void aFileIsReadAsItWasWritten()
    {
        auto records = notes(100);
        records.push_back({ identity(100), deadNote(5) });

        const auto result = read(writeRecords(records, noteSchema(), someOrigin()).bytes);

        QVERIFY(result.records == records);
        QVERIFY(result.status == FileStatus::Understood);
        QCOMPARE(result.badLines, 0);
    }

    void aFileWithoutRecordsIsUnderstood()
    {
        const FilePart part = writeRecords({}, noteSchema(), someOrigin());

        QCOMPARE(part.taken, 0U);
        QVERIFY(read(part.bytes).status == FileStatus::Understood);
    }

    void aRangeIsSplitIntoPartsThatFit_data()
    {
        QTest::addColumn<qint64>("maxBytes");

        QTest::newRow("a mebibyte") << qint64(FileLimits::WrittenBytes);
        QTest::newRow("half") << qint64(FileLimits::WrittenBytes / 2);
        QTest::newRow("a few lines") << qint64(1000);
    }
    void aRangeIsSplitIntoPartsThatFit()
    {
        QFETCH(const qint64, maxBytes);
        const auto records = notes(10'000);

        const auto parts = partsOf(records, maxBytes);

        std::vector<Record> readBack;
        for (const FilePart& part : parts) {
            QVERIFY(part.bytes.size() <= maxBytes);
            const auto result = read(part.bytes);
            QVERIFY(result.status == FileStatus::Understood);
            QCOMPARE(result.records.size(), part.taken);
            readBack.insert(readBack.end(), result.records.begin(), result.records.end());
        }
        QVERIFY(parts.size() > 1);
        QVERIFY(readBack == records);
    }

    void aPartIsAsFullAsItCanBe()
    {
        const auto records = notes(10'000);
        const auto parts = partsOf(records, FileLimits::WrittenBytes);

        const auto next = recordLine(records[parts.front().taken]).size() + 1;

        QVERIFY(parts.front().bytes.size() + next + 5 > FileLimits::WrittenBytes); // digits of "n"
    }

    void aRecordThatDoesNotFitIsAPartOfItsOwn() { QCOMPARE(partsOf(notes(3), 1).size(), 3U); }

    void theLargestRecordFitsIntoALine()
    {
        const QString escapes(Text::MaxBytes, QChar(1));
        QByteArrayList members;
        for (char name = 'A'; name < 'A' + char(UnknownKeys::MaxCount); ++name)
            members += QByteArray("\"") + name + "\":\""
                + QByteArray(UnknownKeys::MaxMemberBytes - 6, 'x') + "\"";
        const Note note { .amount = -2.2250738585072014e-308, .place = QString(2700, QChar(1)) };
        LiveRecord live = liveNote(note, escapes);
        live.unknown = unknownKeys("{" + members.join(',') + "}");
        const Record record { identity(1), live };

        const QByteArray line = recordLine(record);

        QVERIFY(live.content.attributes.text().size() > Attributes::MaxBytes - 200);
        QVERIFY(line.size() <= JsonLimits::LineBytes);
        QVERIFY(readRecordLine(line, noteSchema()) == record);
    }

    void aLineOfOursIsReadFast()
    {
        const Note note { .amount = -0.0, .count = -7, .done = true, .stamp = -5 };
        const Record record { identity(1), liveNote(note, QStringLiteral("\u00e9, \U0001F600")) };

        QVERIFY(readOwnRecordLine(recordLine(record), noteSchema()) == record);
    }

    void aLineThatIsNotExactlyOursIsNotReadFast_data()
    {
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");

        QTest::newRow("blank") << QByteArray(",\"c\"") << QByteArray(", \"c\"");
        QTest::newRow("behind") << QByteArray("]}") << QByteArray("]} ");
        QTest::newRow("two lines") << QByteArray("]}") << QByteArray("]}{}");
        QTest::newRow("order") << QByteArray("\"count\":0,\"done\":false")
                               << QByteArray("\"done\":false,\"count\":0");
        QTest::newRow("missing") << QByteArray("\"count\":0,") << QByteArray();
        QTest::newRow("double otherwise") << QByteArray("\"0\"") << QByteArray("\"0.0\"");
        QTest::newRow("zero's sign") << QByteArray("\"count\":0") << QByteArray("\"count\":-0");
        QTest::newRow("leading zero") << QByteArray("\"count\":0") << QByteArray("\"count\":00");
        QTest::newRow("fraction") << QByteArray("\"count\":0") << QByteArray("\"count\":0.0");
        QTest::newRow("literal") << QByteArray("false") << QByteArray("falsy");
        QTest::newRow("kind") << QByteArray("\"count\":0") << QByteArray("\"count\":\"0\"");
        QTest::newRow("added to the content")
            << QByteArray("\"place\"") << QByteArray("\"more\":1,\"place\"");
        QTest::newRow("added to the line") << QByteArray("]}") << QByteArray("],\"more\":1}");
        QTest::newRow("escape") << QByteArray("Dinner") << QByteArray("Dinn\\u0065r");
        QTest::newRow("quote") << QByteArray("Dinner") << QByteArray("Dinn\\\"er");
        QTest::newRow("control character") << QByteArray("Dinner") << QByteArray("Dinner\x01");
        QTest::newRow("invalid UTF-8") << QByteArray("Dinner") << QByteArray("Dinner\xff");
        QTest::newRow("text without end") << QByteArray("Dinner\"]}") << QByteArray("Dinner");
        QTest::newRow("dead") << QByteArray("{\"id\"") << QByteArray("{\"x\":1,\"id\"");
    }
    void aLineThatIsNotExactlyOursIsNotReadFast()
    {
        QFETCH(const QByteArray, from);
        QFETCH(const QByteArray, to);
        const QByteArray line = recordLine({ identity(1), liveNote({}, QStringLiteral("Dinner")) });
        QVERIFY(readOwnRecordLine(line, noteSchema()));
        QVERIFY(line.contains(from));

        QVERIFY(!readOwnRecordLine(QByteArray(line).replace(from, to), noteSchema()));
        for (qsizetype size = 0; size < line.size(); ++size)
            QVERIFY(!readOwnRecordLine(line.first(size), noteSchema()));
    }

    void anotherFormatOrVersionIsNotUnderstood_data()
    {
        QTest::addColumn<QByteArray>("header");
        const QByteArray good = noteHeader(1);

        QTest::newRow("empty") << QByteArray();
        QTest::newRow("other format") << replaced(good, "notes", "vexilo-kv");
        QTest::newRow("format of another kind") << replaced(good, "\"notes\"", "1");
        QTest::newRow("no format") << replaced(good, "\"fmt\":\"notes\",", "");
        QTest::newRow("newer version") << replaced(good, "\"v\":1", "\"v\":2");
        QTest::newRow("version as a text") << replaced(good, "\"v\":1", "\"v\":\"1\"");
        QTest::newRow("version with a point") << replaced(good, "\"v\":1", "\"v\":1.0");
        QTest::newRow("no version") << replaced(good, "\"v\":1,", "");
        QTest::newRow("version twice") << replaced(good, "\"v\":1,", "\"v\":1,\"v\":1,");
        QTest::newRow("no count") << replaced(good, "\"n\":1,", "");
        QTest::newRow("negative count") << replaced(good, "\"n\":1", "\"n\":-1");
        QTest::newRow("count past the limit") << replaced(good, "\"n\":1", "\"n\":50001");
        QTest::newRow("short device") << replaced(good, "0123456789abcdef", "123456789abcdef");
        QTest::newRow("capital device") << replaced(good, "0123456789abcdef", "0123456789ABCDEF");
        QTest::newRow("no writer") << replaced(good, ",\"w\":\"fedcba9876543210\"", "");
        QTest::newRow("record") << recordLine(notes(1).front());
        QTest::newRow("web page") << QByteArray("<!DOCTYPE html>");
        QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbf" + good);
        QTest::newRow("carriage return") << QByteArray(good + "\r");
        QTest::newRow("too long") << QByteArray(good + QByteArray(JsonLimits::LineBytes, ' '));
    }
    void anotherFormatOrVersionIsNotUnderstood()
    {
        QFETCH(const QByteArray, header);

        const auto result = readWithHeader(header);

        QVERIFY(result.status == FileStatus::NotUnderstood);
        QVERIFY(result.records.empty());
    }

    void whatANewerVersionAddedToTheHeaderIsSkipped()
    {
        const auto result
            = readWithHeader(replaced(noteHeader(1), "\"v\":1", R"("v":1,"app":"2.0")"));

        QVERIFY(result.status == FileStatus::Understood);
        QCOMPARE(result.records.size(), 1U);
    }

    void aBadLineIsSkippedAndCounted_data()
    {
        QTest::addColumn<QByteArray>("line");
        const QByteArray live = recordLine(notes(1).front());
        const QByteArray dead = recordLine({ identity(1), deadNote(5) });

        QTest::newRow("empty") << QByteArray();
        QTest::newRow("no JSON") << QByteArray("nonsense");
        QTest::newRow("binary") << QByteArray("\0\xff\x01{", 4);
        QTest::newRow("too long") << QByteArray(JsonLimits::LineBytes + 1, ' ');
        QTest::newRow("much too long") << QByteArray(3 * JsonLimits::LineBytes, '{');
        QTest::newRow("empty object") << QByteArray("{}");
        QTest::newRow("no identity") << replaced(live, "\"id\"", "\"ID\"");
        QTest::newRow("identity with braces")
            << replaced(live, "\"00000000-0000-0000-0000-000000000000\"",
                   "\"{00000000-0000-0000-0000-000000000000}\"");
        QTest::newRow("capital identity") << replaced(
            live, "00000000-0000-0000-0000-000000000000", "ABCDEF00-0000-0000-0000-000000000000");
        QTest::newRow("identity that is none")
            << replaced(live, "00000000-0000-0000-0000-000000000000", "nonsense");
        QTest::newRow("neither live nor dead")
            << QByteArray(R"({"id":"00000000-0000-0000-0000-000000000001"})");
        QTest::newRow("no content") << replaced(live, "\"c\":", "\"C\":");
        QTest::newRow("no renaming") << replaced(live, "\"r\":", "\"R\":");
        QTest::newRow("time past the limit")
            << replaced(live, "0000000001000-00001", "10000000001000-00001");
        QTest::newRow("content without a time") << replaced(live, "\"0000000001000-00001\",", "");
        QTest::newRow("content with more") << replaced(live, "}],", "},1],");
        QTest::newRow("attribute of another form")
            << replaced(live, "\"count\":0", "\"count\":0.5");
        QTest::newRow("renaming without a device") << replaced(live, "\"0123456789abcdef\",", "");
        QTest::newRow("capital device") << replaced(live, "0123456789abcdef", "0123456789ABCDEF");
        QTest::newRow("number for a name") << replaced(live, "\"Dinner\"", "1");
        QTest::newRow("live and dying") << replaced(live, "}", R"(,"h":"0000000000005-00000"})");
        QTest::newRow("dead with another mark") << replaced(dead, "\"x\":1", "\"x\":2");
        QTest::newRow("dead by a word") << replaced(dead, "\"x\":1", "\"x\":true");
        QTest::newRow("dead without a time") << replaced(dead, "\"h\"", "\"H\"");
        QTest::newRow("dead with a content") << replaced(dead, "\"x\":1", R"("x":1,"c":[])");
        QTest::newRow("dead with a renaming") << replaced(dead, "\"x\":1", R"("x":1,"r":[])");
        QTest::newRow("header again") << noteHeader(3);
        QTest::newRow("carriage return") << QByteArray(live + "\r");
    }
    void aBadLineIsSkippedAndCounted()
    {
        QFETCH(const QByteArray, line);

        const auto result = readBetweenGoodLines(line);

        QVERIFY(result.records == notes(2));
        QCOMPARE(result.badLines, 1);
        QVERIFY(result.status == FileStatus::Partial);
    }

    void whatANewerVersionAddedToALineIsWrittenBack()
    {
        const QByteArray line = replaced(
            recordLine(notes(1).front()), "\"Dinner\"]", R"("Dinner"],"a":{"b":[1.50]},"z":null)");

        const auto record = readRecordLine(line, noteSchema());

        QCOMPARE(recordLine(record.value()), line);
    }

    void moreOrFewerLinesThanPromisedArePartial()
    {
        const QByteArray line = recordLine(notes(1).front());

        for (const qint64 promised : { 0, 2 }) {
            const auto result = read(fileOf(noteHeader(promised), { line }));
            QVERIFY(result.status == FileStatus::Partial);
            QCOMPARE(result.records.size(), 1U);
        }
    }

    void aTruncatedFileHasOnlyRecordsOfTheWholeOne()
    {
        const auto records = notes(4);
        const QByteArray file = writeRecords(records, noteSchema(), someOrigin()).bytes;
        const qsizetype headerSize = noteHeader(4).size() + 1;

        for (qsizetype size = 0; size < file.size(); ++size) {
            const auto result = read(file.first(size));

            QVERIFY(result.status
                == (size < headerSize ? FileStatus::NotUnderstood : FileStatus::Partial));
            const auto lines = std::size_t(file.first(size).count('\n'));
            QCOMPARE(result.records.size(), lines == 0 ? 0 : lines - 1);
            QVERIFY(std::equal(result.records.begin(), result.records.end(), records.begin()));
        }
    }

    void aFileUpToTheLimitsIsUnderstood()
    {
        const QByteArrayList lines(FileLimits::Lines, recordLine({ identity(1), deadNote(5) }));

        const auto result = read(fileOf(noteHeader(FileLimits::Lines), lines));

        QCOMPARE(result.records.size(), std::size_t(FileLimits::Lines));
        QVERIFY(result.status == FileStatus::Understood);
    }

    void linesPastTheLimitAreNotRead()
    {
        const QByteArrayList lines(FileLimits::Lines + 5, recordLine({ identity(1), deadNote(5) }));

        const auto result = read(fileOf(noteHeader(FileLimits::Lines), lines));

        QCOMPARE(result.records.size(), std::size_t(FileLimits::Lines));
        QVERIFY(result.status == FileStatus::Partial);
    }

    void bytesPastTheLimitAreNotRead_data()
    {
        QTest::addColumn<int>("past");

        QTest::newRow("full") << 0;
        QTest::newRow("one byte too many") << 1;
        QTest::newRow("far too many") << 10'000'000;
    }
    void bytesPastTheLimitAreNotRead()
    {
        QFETCH(const int, past);
        // Lines of a kibibyte each, padded with blanks, and the last one as long as it takes.
        const QByteArray line = recordLine({ identity(1), deadNote(5) });
        const auto padded = [&line](qsizetype size) -> QByteArray {
            return line + QByteArray(size - line.size() - 1, ' ') + '\n';
        };
        QByteArray file = noteHeader(8191) + '\n';
        for (int i = 0; i < 8190; ++i)
            file += padded(1024);
        file += padded(FileLimits::ReadBytes - file.size());

        file.insert(file.size() - 1, QByteArray(past, ' '));
        const auto result = read(file);

        QVERIFY(result.status == (past == 0 ? FileStatus::Understood : FileStatus::Partial));
        QCOMPARE(result.records.size(), past == 0 ? 8191U : 8190U);
    }

    void aFileIsNotUnderstoodBeforeItsEndWasRead()
    {
        QByteArray file = writeRecords(notes(1), noteSchema(), someOrigin()).bytes;
        QBuffer device(&file);
        QVERIFY(device.open(QIODevice::ReadOnly));
        RecordReader reader(device, noteSchema());

        QVERIFY(reader.next());
        QVERIFY(reader.file().status() == FileStatus::Partial);
        QVERIFY(!reader.next());
        QVERIFY(reader.file().status() == FileStatus::Understood);
        QCOMPARE(reader.file().header()->origin, someOrigin());
    }

    void aDeviceThatCannotBeReadIsNotUnderstood()
    {
        QTest::ignoreMessage(QtWarningMsg, "QIODevice::readLine (QBuffer): device not open");
        QBuffer closed;
        RecordReader reader(closed, noteSchema());

        QVERIFY(!reader.next());
        QVERIFY(reader.file().status() == FileStatus::NotUnderstood);
    }
};

QTEST_APPLESS_MAIN(RecordFileTest)
#include "RecordFileTest.moc"
