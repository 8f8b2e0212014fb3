#include "ListingReader.h"

#include <QTest>

using namespace mirror;

namespace {

const QUrl folder(QStringLiteral("https://cloud.example/dav/Jos%C3%A9/bills/"));

QByteArray response(const QByteArray& href, const QByteArray& properties,
    const QByteArray& status = "HTTP/1.1 200 OK")
{
    return "<D:response><D:href>" + href + "</D:href><D:propstat><D:prop>" + properties
        + "</D:prop><D:status>" + status + "</D:status></D:propstat></D:response>\n";
}

QByteArray collection(const QByteArray& href)
{
    return response(href, "<D:resourcetype><D:collection/></D:resourcetype>");
}

QByteArray file(const QByteArray& href, const QByteArray& size = "7")
{
    return response(href, "<D:resourcetype/><D:getcontentlength>" + size + "</D:getcontentlength>");
}

QByteArray multistatus(const QByteArray& responses)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<D:multistatus xmlns:D=\"DAV:\">"
        + responses + "</D:multistatus>";
}

const QByteArray itself = collection("/dav/Jos%C3%A9/bills/");

std::optional<QList<FileEntry>> read(const QByteArrayList& pieces, const QUrl& asked = folder)
{
    ListingReader reader(asked);
    for (const QByteArray& piece : pieces)
        reader.add(piece);
    return reader.entries();
}

std::optional<QList<FileEntry>> read(const QByteArray& body)
{
    return read(QByteArrayList { body });
}

FileEntry fileEntry(const QString& name, std::optional<qint64> size = 7)
{
    return { name, FileEntry::Type::File, size };
}

using Entries = QList<FileEntry>;

} // namespace

class ListingReaderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFolderWithNothingInItIsEmpty() { QCOMPARE(read(multistatus(itself)), Entries()); }

    void anAddressIsTakenByItsPath_data()
    {
        QTest::addColumn<QByteArray>("href");
        QTest::newRow("path") << QByteArray("/dav/Jos%C3%A9/bills/a.jsonl");
        QTest::newRow("whole address")
            << QByteArray("https://cloud.example/dav/Jos%C3%A9/bills/a.jsonl");
        QTest::newRow("another host")
            << QByteArray("http://inner.example:8080/dav/Jos%C3%A9/bills/a.jsonl");
        QTest::newRow("relative to the folder") << QByteArray("a.jsonl");
        QTest::newRow("small letters in codes") << QByteArray("/dav/Jos%c3%a9/bills/a.jsonl");
        QTest::newRow("codes without need") << QByteArray("/d%61v/Jos%C3%A9/bills/%61.jsonl");
        QTest::newRow("not coded") << QByteArray("/dav/José/bills/a.jsonl");
        QTest::newRow("composed otherwise") << QByteArray("/dav/Jose%CC%81/bills/a.jsonl");
        QTest::newRow("two slashes") << QByteArray("/dav//Jos%C3%A9/bills//a.jsonl");
        QTest::newRow("blanks around") << QByteArray("\n /dav/Jos%C3%A9/bills/a.jsonl \n");
    }
    void anAddressIsTakenByItsPath()
    {
        QFETCH(QByteArray, href);

        QCOMPARE(read(multistatus(itself + file(href))),
            Entries({ fileEntry(QStringLiteral("a.jsonl")) }));
    }

    void anotherAddressPutsTheWholeListingInDoubt_data()
    {
        QTest::addColumn<QByteArray>("href");
        QTest::newRow("another folder") << QByteArray("/dav/Jos%C3%A9/other/a.jsonl");
        QTest::newRow("the parent") << QByteArray("/dav/Jos%C3%A9/");
        QTest::newRow("the root") << QByteArray("/");
        QTest::newRow("deeper") << QByteArray("/dav/Jos%C3%A9/bills/inner/a.jsonl");
        QTest::newRow("up and down") << QByteArray("/dav/Jos%C3%A9/bills/../other/a.jsonl");
        QTest::newRow("coded dots") << QByteArray("/dav/Jos%C3%A9/bills/%2e%2e");
        QTest::newRow("a coded slash") << QByteArray("/dav/Jos%C3%A9/bills/a%2Fb");
        QTest::newRow("a zero byte") << QByteArray("/dav/Jos%C3%A9/bills/a%00b");
        QTest::newRow("none") << QByteArray();
        QTest::newRow("no path") << QByteArray("mailto:someone@cloud.example");
    }
    void anotherAddressPutsTheWholeListingInDoubt()
    {
        QFETCH(QByteArray, href);

        QVERIFY(!read(multistatus(itself + file("good") + file(href))));
    }

    void onlyPropertiesThatWereFoundCount()
    {
        const QByteArray split = "<D:response><D:href>x</D:href>"
                                 "<D:propstat><D:prop><D:getcontentlength>3</D:getcontentlength>"
                                 "</D:prop><D:status>HTTP/1.1 200 OK</D:status></D:propstat>"
                                 "<D:propstat><D:prop><D:resourcetype><D:collection/>"
                                 "</D:resourcetype></D:prop><D:status>HTTP/1.1 404 Not Found"
                                 "</D:status></D:propstat></D:response>";

        QCOMPARE(read(multistatus(itself + split)), Entries({ fileEntry(QStringLiteral("x"), 3) }));
    }

    void aSizeThatIsNoneIsUnknown()
    {
        for (const char* size : { "", "-1", "big", "99999999999999999999" })
            QCOMPARE(read(multistatus(itself + file("x", size))),
                Entries({ fileEntry(QStringLiteral("x"), std::nullopt) }));
    }

    void aCollectionHasNoSize()
    {
        const QByteArray inner = response("inner/",
            "<D:resourcetype><D:collection/></D:resourcetype>"
            "<D:getcontentlength>4096</D:getcontentlength>");

        QCOMPARE(read(multistatus(itself + inner)),
            Entries({ { QStringLiteral("inner"), FileEntry::Type::Collection, std::nullopt } }));
    }

    void elementsOfOthersAreNotTakenForOurs()
    {
        const QByteArray foreign = response("x",
            "<o:resourcetype xmlns:o=\"http://other.example/\"><D:collection/></o:resourcetype>"
            "<getcontentlength>3</getcontentlength>");

        QCOMPARE(read(multistatus(itself + foreign)),
            Entries({ fileEntry(QStringLiteral("x"), std::nullopt) }));
    }

    void aDoubtfulAnswerIsNoListing_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("without the folder") << multistatus(file("a"));
        QTest::newRow("without anything") << multistatus({});
        QTest::newRow("the folder is a file") << multistatus(file("/dav/Jos%C3%A9/bills/"));
        QTest::newRow("page") << QByteArray("<html><body>Please log in</body></html>");
        QTest::newRow("page of old") << QByteArray("<!DOCTYPE html><title>Welcome</title><p>Hello");
        QTest::newRow("another root") << QByteArray("<D:error xmlns:D=\"DAV:\"/>");
        QTest::newRow("another namespace")
            << multistatus(itself).replace("xmlns:D=\"DAV:\"", "xmlns:D=\"dav:\"");
        QTest::newRow("cut short") << multistatus(itself + file("a")).chopped(1);
        QTest::newRow("cut in between") << multistatus(itself).chopped(20);
        QTest::newRow("text after the end") << multistatus(itself) + "Fatal error: out of memory";
        QTest::newRow("a second document") << multistatus(itself) + multistatus(itself);
        QTest::newRow("a comment after the end") << multistatus(itself) + "<!-- the end -->";
        QTest::newRow("wrong bytes") << multistatus(itself + file("a\xff"));
        QTest::newRow("a document type")
            << multistatus(itself).replace("?>\n", "?>\n<!DOCTYPE x>\n");
        QTest::newRow("an entity of its own")
            << multistatus(itself + file("&e;"))
                   .replace("?>\n", "?>\n<!DOCTYPE x [<!ENTITY e \"a\">]>\n");
        QTest::newRow("an unknown entity") << multistatus(itself + file("&e;"));
        QTest::newRow("a member that failed") << multistatus(itself
            + "<D:response><D:href>x</D:href>"
              "<D:status>HTTP/1.1 507 Insufficient Storage</D:status>"
              "</D:response>");
        QTest::newRow("endless nesting") << multistatus(
            itself + QByteArray("<a>").repeated(100) + QByteArray("</a>").repeated(100));
    }
    void aDoubtfulAnswerIsNoListing()
    {
        QFETCH(QByteArray, body);

        QVERIFY(!read(body));
    }

    void whereTheAnswerIsCutIntoPiecesMakesNoDifference_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<bool>("isListing");
        const QByteArray good
            = multistatus(itself + file("caf\xc3\xa9 &amp; bar") + collection("b"));
        QTest::newRow("good") << good << true;
        QTest::newRow("good with line ends") << good + "\r\n\n" << true;
        QTest::newRow("error text after the end") << good + "\nError" << false;
        QTest::newRow("comment after the end") << good + "<!-- x -->" << false;
        QTest::newRow("end of a CDATA section in a name")
            << multistatus(itself + file("a]]>b")) << false;
    }
    void whereTheAnswerIsCutIntoPiecesMakesNoDifference()
    {
        QFETCH(QByteArray, body);
        QFETCH(bool, isListing);
        const std::optional<Entries> whole = read(body);
        QCOMPARE(whole.has_value(), isListing);

        for (qsizetype cut = 0; cut <= body.size(); ++cut)
            QCOMPARE(read(QByteArrayList { body.first(cut), body.sliced(cut) }), whole);
        QByteArrayList bytes;
        for (const char byte : body)
            bytes.append(QByteArray(1, byte));
        QCOMPARE(read(bytes), whole);
    }

    void aListingIsReadUpToFourMebibytes()
    {
        const QByteArray start = multistatus(itself);
        const QByteArray blanks(ListingReader::maximumSize - start.size(), ' ');

        QCOMPARE(read({ start, blanks }), Entries());
        QVERIFY(!read({ start, blanks + ' ' }));
    }

    void theRootOfAServerCanBeListed()
    {
        const QUrl root(QStringLiteral("https://cloud.example/"));

        QCOMPARE(read({ multistatus(collection("/") + file("/a")) }, root),
            Entries({ fileEntry(QStringLiteral("a")) }));
    }
};

QTEST_GUILESS_MAIN(ListingReaderTest)
#include "ListingReaderTest.moc"
