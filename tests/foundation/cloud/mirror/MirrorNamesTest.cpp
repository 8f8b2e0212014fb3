#include "MirrorNames.h"

#include <QTest>

using mirror::Epoch;
using mirror::FileContent;
using mirror::FileName;

namespace {

const QString Hash
    = QStringLiteral("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");

} // namespace

class MirrorNamesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFileIsNamedByTheHashOfItsBytes()
    {
        QCOMPARE(
            FileName::of(FileContent::Records, "abc").toText(), QString(u"b1-" + Hash + u".jsonl"));
        QCOMPARE(FileName::of(FileContent::KeyValues, "abc").toText(),
            QString(u"k1-" + Hash + u".jsonl"));
    }

    void aFilesNameIsReadBack()
    {
        for (const FileContent content : { FileContent::Records, FileContent::KeyValues }) {
            const FileName name = FileName::of(content, "bytes");

            QCOMPARE(FileName::fromText(name.toText()), name);
        }
    }

    void anyOtherFileNameIsIgnored_data()
    {
        QTest::addColumn<QString>("name");

        QTest::newRow("empty") << QString();
        QTest::newRow("readme") << QStringLiteral("README.txt");
        QTest::newRow("newer version") << QString(u"b2-" + Hash + u".jsonl");
        QTest::newRow("upper-case hash") << QString(u"b1-" + Hash.toUpper() + u".jsonl");
        QTest::newRow("short hash") << QString(u"b1-" + Hash.chopped(1) + u".jsonl");
        QTest::newRow("long hash") << QString(u"b1-" + Hash + u"0.jsonl");
        QTest::newRow("no hexadecimal") << QString(u"b1-" + Hash.chopped(1) + u"g.jsonl");
        QTest::newRow("foreign character") << QString(u"b1-" + Hash.chopped(1) + u"\u0660.jsonl");
        QTest::newRow("other suffix") << QString(u"b1-" + Hash + u".json");
        QTest::newRow("no suffix") << QString(u"b1-" + Hash);
        QTest::newRow("backup") << QString(u"b1-" + Hash + u".jsonl~");
        QTest::newRow("conflict copy") << QString(u"b1-" + Hash + u" (conflict).jsonl");
        QTest::newRow("path") << QString(u"../b1-" + Hash + u".jsonl");
        QTest::newRow("line end") << QString(u"b1-" + Hash + u".jsonl\n");
        QTest::newRow("overlap") << QStringLiteral("b1-.jsonl");
        QTest::newRow("epoch") << QStringLiteral("e-1763690400000-0123456789abcdef");
    }
    void anyOtherFileNameIsIgnored()
    {
        QFETCH(const QString, name);

        QVERIFY(!FileName::fromText(name));
    }

    void anEpochIsNamedByItsTimeAndItsBits()
    {
        const Epoch epoch { 1763690400000, 0x0123456789abcdef };

        QCOMPARE(epoch.folderName(), QStringLiteral("e-1763690400000-0123456789abcdef"));
        QCOMPARE(epoch.closedMarkerName(),
            QStringLiteral("closed-e-1763690400000-0123456789abcdef.json"));
    }

    void anEpochsNamesAreReadBack()
    {
        for (const Epoch& epoch :
            { Epoch {}, Epoch { 7, 9 }, Epoch { 9999999999999, ~quint64(0) } }) {
            QCOMPARE(Epoch::fromFolderName(epoch.folderName()), epoch);
            QCOMPARE(Epoch::fromClosedMarkerName(epoch.closedMarkerName()), epoch);
        }
    }

    void epochsSortAsTheirNamesDo()
    {
        const Epoch older { 5, 9 };
        const Epoch newer { 10, 1 };
        const Epoch rival { 10, 2 };

        QVERIFY(older < newer && older.folderName() < newer.folderName());
        QVERIFY(newer < rival && newer.folderName() < rival.folderName());
    }

    void anyOtherFolderNameIsIgnored_data()
    {
        QTest::addColumn<QString>("name");

        QTest::newRow("empty") << QString();
        QTest::newRow("prefix alone") << QStringLiteral("e-");
        QTest::newRow("twelve digits") << QStringLiteral("e-176369040000-0123456789abcdef");
        QTest::newRow("fourteen digits") << QStringLiteral("e-17636904000000-0123456789abcdef");
        QTest::newRow("fifteen bits") << QStringLiteral("e-1763690400000-0123456789abcde");
        QTest::newRow("seventeen bits") << QStringLiteral("e-1763690400000-0123456789abcdef0");
        QTest::newRow("upper case") << QStringLiteral("e-1763690400000-0123456789ABCDEF");
        QTest::newRow("sign") << QStringLiteral("e--763690400000-0123456789abcdef");
        QTest::newRow("slash") << QStringLiteral("e-1763690400000-0123456789abcdef/");
        QTest::newRow("other separator") << QStringLiteral("e-1763690400000_0123456789abcdef");
        QTest::newRow("marker") << Epoch { 7, 9 }.closedMarkerName();
    }
    void anyOtherFolderNameIsIgnored()
    {
        QFETCH(const QString, name);

        QVERIFY(!Epoch::fromFolderName(name));
    }

    void anyOtherMarkerNameIsIgnored_data()
    {
        QTest::addColumn<QString>("name");

        QTest::newRow("empty") << QString();
        QTest::newRow("folder") << Epoch { 7, 9 }.folderName();
        QTest::newRow("no suffix") << QString(u"closed-" + Epoch { 7, 9 }.folderName());
        QTest::newRow("other suffix") << QString(Epoch { 7, 9 }.closedMarkerName() + u'l');
        QTest::newRow("no epoch") << QStringLiteral("closed-.json");
    }
    void anyOtherMarkerNameIsIgnored()
    {
        QFETCH(const QString, name);

        QVERIFY(!Epoch::fromClosedMarkerName(name));
    }
};

QTEST_APPLESS_MAIN(MirrorNamesTest)
#include "MirrorNamesTest.moc"
