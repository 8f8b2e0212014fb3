#include "FaultyServer.h"
#include "WebDavStore.h"

#include <QBuffer>
#include <QSemaphore>
#include <QTest>

using namespace mirror;
using namespace std::chrono_literals;
using Kind = FileError::Kind;
using Answer = FaultyServer::Answer;
using Then = FaultyServer::Answer::Then;

namespace {

const QByteArray listing = R"(<d:multistatus xmlns:d="DAV:"><d:response><d:href>/dav/</d:href>
<d:propstat><d:prop><d:resourcetype><d:collection/></d:resourcetype></d:prop>
<d:status>HTTP/1.1 200 OK</d:status></d:propstat></d:response></d:multistatus>)";

/// How each operation ended: nothing where it succeeded.
struct Endings {
    std::optional<FileError> list, get, put, make, remove;

    [[nodiscard]] QList<std::optional<FileError>> all() const
    {
        return { list, get, put, make, remove };
    }
};

template <class T> std::optional<FileError> ending(const Outcome<T>& outcome)
{
    return outcome ? std::nullopt : std::optional(outcome.error());
}

Endings tryAll(FileStore& store)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return { ending(store.list(QString())), ending(store.get(QStringLiteral("a b"), buffer, 1000)),
        ending(store.put(QStringLiteral("a b"), "bytes")),
        ending(store.makeCollection(QStringLiteral("c"))),
        ending(store.remove(QStringLiteral("a b"), Trash::Skip)) };
}

FaultyServer::Rule always(const Answer& answer)
{
    return [answer](const FaultyServer::Request&) { return answer; };
}

std::unique_ptr<WebDavStore> storeAt(const QUrl& root, WebDavManners manners = { "Vexilo/1.2" })
{
    return std::make_unique<WebDavStore>(
        WebDavAccount { root, QStringLiteral("ann"), QStringLiteral("pass"), {}, {} },
        std::move(manners));
}

/// A mute server, and a store that is waiting for it on a thread of its own.
class Waiting {
public:
    Waiting()
        : m_server([this](const FaultyServer::Request&) {
            m_isAsked.release();
            return Answer {};
        })
        , m_thread(QThread::create([this] {
            const auto store = storeAt(m_server.url(), { "Test/1", 30s, cancellation });
            for (std::optional<FileError>& each : errors)
                each = ending(store->put(QStringLiteral("a"), "bytes"));
        }))
    {
        m_thread->start();
    }
    ~Waiting() { m_thread->wait(); }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

    [[nodiscard]] bool untilAsked() { return m_isAsked.tryAcquire(1, 20000); }
    [[nodiscard]] bool untilEnded() { return m_thread->wait(20000); }
    [[nodiscard]] qsizetype requests() const { return m_server.requests().size(); }

    std::shared_ptr<Cancellation> cancellation = std::make_shared<Cancellation>();
    std::array<std::optional<FileError>, 2> errors; // of two requests, one after the other

private:
    QSemaphore m_isAsked;
    FaultyServer m_server;
    std::unique_ptr<QThread> m_thread;
};

} // namespace

class FaultsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aRefusalIsOfItsKindForEveryRequest_data()
    {
        QTest::addColumn<QByteArray>("status");
        QTest::addColumn<Kind>("kind");
        QTest::newRow("200 page") << QByteArray("299 Page") << Kind::NotUnderstood;
        QTest::newRow("400") << QByteArray("400 Bad Request") << Kind::NotUnderstood;
        QTest::newRow("401") << QByteArray("401 Unauthorized") << Kind::Unauthorised;
        QTest::newRow("403") << QByteArray("403 Forbidden") << Kind::Unauthorised;
        QTest::newRow("404") << QByteArray("404 Not Found") << Kind::NotFound;
        QTest::newRow("407") << QByteArray("407 Proxy") << Kind::NotUnderstood;
        QTest::newRow("409") << QByteArray("409 Conflict") << Kind::Conflict;
        QTest::newRow("413") << QByteArray("413 Too Large") << Kind::TooLarge;
        QTest::newRow("423") << QByteArray("423 Locked") << Kind::Locked;
        QTest::newRow("429") << QByteArray("429 Too Many") << Kind::Busy;
        QTest::newRow("500") << QByteArray("500 Error") << Kind::Server;
        QTest::newRow("503") << QByteArray("503 Unavailable") << Kind::Busy;
        QTest::newRow("507") << QByteArray("507 Insufficient Storage") << Kind::TooLarge;
    }
    void aRefusalIsOfItsKindForEveryRequest()
    {
        QFETCH(QByteArray, status);
        QFETCH(Kind, kind);
        const QByteArrayList headers { "Retry-After: 17", "Content-Type: text/html",
            "WWW-Authenticate: Basic realm=\"bills\"" };
        FaultyServer server(always(FaultyServer::answer(status, "<html>No.</html>", headers)));

        const Endings endings = tryAll(*storeAt(server.url()));

        for (const std::optional<FileError>& error : endings.all()) {
            QVERIFY(error);
            QCOMPARE(error->kind, kind);
            QCOMPARE(error->status, status.first(3).toInt());
            QCOMPARE(error->retryAfter, 17s);
        }
        QCOMPARE(server.requests().size(), 5); // none is tried again
    }

    void aRedirectIsNeitherFollowedNorASuccess_data()
    {
        QTest::addColumn<QByteArray>("status");
        for (const char* status : { "300", "301", "302", "303", "304", "307", "308" })
            QTest::addRow("%s", status) << QByteArray(status);
    }
    void aRedirectIsNeitherFollowedNorASuccess()
    {
        QFETCH(QByteArray, status);
        FaultyServer elsewhere(always(FaultyServer::answer("200 OK", "stored")));
        const QByteArray location = "Location: " + elsewhere.url().toEncoded();
        FaultyServer server(always(FaultyServer::answer(status + " Away", {}, { location })));

        const Endings endings = tryAll(*storeAt(server.url()));

        for (const std::optional<FileError>& error : endings.all()) {
            QVERIFY(error);
            QCOMPARE(error->kind, Kind::Redirect);
        }
        QCOMPARE(server.requests().size(), 5);
        QCOMPARE(elsewhere.connections(), 0);
    }

    void aFileIsStoredWhereTheServerSaysSo_data()
    {
        QTest::addColumn<QByteArray>("status");
        QTest::addColumn<bool>("isStored");
        QTest::newRow("200") << QByteArray("200 OK") << true;
        QTest::newRow("201") << QByteArray("201 Created") << true;
        QTest::newRow("202") << QByteArray("202 Accepted") << false;
        QTest::newRow("204") << QByteArray("204 No Content") << true;
        QTest::newRow("207") << QByteArray("207 Multi-Status") << false;
    }
    void aFileIsStoredWhereTheServerSaysSo()
    {
        QFETCH(QByteArray, status);
        QFETCH(bool, isStored);
        FaultyServer server(always(FaultyServer::answer(status)));

        const Outcome<> stored = storeAt(server.url())->put(QStringLiteral("a"), "bytes");

        QCOMPARE(static_cast<bool>(stored), isStored);
        QCOMPARE(server.requests().value(0).body, QByteArray("bytes"));
    }

    void aDeletionInPartIsAFailureOfTheServer()
    {
        FaultyServer server(always(FaultyServer::answer("207 Multi-Status", listing)));

        const Outcome<> removed = storeAt(server.url())->remove(QStringLiteral("a/"), Trash::Use);

        QCOMPARE(removed.error().kind, Kind::Server);
    }

    void aDoubtfulAnswerIsNoListing_data()
    {
        QTest::addColumn<Answer>("answer");
        QTest::addColumn<Kind>("kind");
        const QByteArray page = "<html><body><form>Log in</form></body></html>";
        const QByteArray head = "HTTP/1.1 207 Multi-Status\r\n";
        const auto row = [](const char* name, const Answer& answer, Kind kind) {
            QTest::newRow(name) << answer << kind;
        };
        row("a page with 200", FaultyServer::answer("200 OK", page), Kind::NotUnderstood);
        row("a page with 207", FaultyServer::answer("207 MS", page), Kind::NotUnderstood);
        row("a listing with 200", FaultyServer::answer("200 OK", listing), Kind::NotUnderstood);
        row("nothing", FaultyServer::answer("207 MS"), Kind::NotUnderstood);
        row("nothing and 204", FaultyServer::answer("204 None"), Kind::NotUnderstood);
        row("error text after the end",
            FaultyServer::answer("207 MS", listing + "\nFatal error: no memory"),
            Kind::NotUnderstood);
        row("error text in a later piece",
            { { head + "Connection: close\r\n\r\n" + listing, "Fatal error" }, Then::Close },
            Kind::NotUnderstood);
        row("without the folder",
            FaultyServer::answer("207 MS", QByteArray(listing).replace("/dav/", "/dav/a")),
            Kind::NotUnderstood);
        row("another folder",
            FaultyServer::answer("207 MS", QByteArray(listing).replace("/dav/", "/other/")),
            Kind::NotUnderstood);
        row("half a body",
            { { head + "Content-Length: 1000\r\n\r\n" + listing.first(100) }, Then::Close },
            Kind::Network);
        row("a whole listing, shorter than announced",
            { { head + "Content-Length: 1000\r\n\r\n" + listing }, Then::Close }, Kind::Network);
        row("half a body of unknown length",
            { { head + "Connection: close\r\n\r\n" + listing.first(100) }, Then::Close },
            Kind::NotUnderstood);
        row("without an end", { { head + "\r\n" + listing.chopped(14) }, Then::SendForEver },
            Kind::NotUnderstood);
        row("coded", FaultyServer::answer("207 MS", listing, { "Content-Encoding: br" }),
            Kind::NotUnderstood);
        row("no HTTP", { { "220 mail.example ESMTP\r\n" }, Then::Close }, Kind::Network);
        row("no answer", { {}, Then::Close }, Kind::Network);
        row("half a head", { { head + "Content-Le" }, Then::Close }, Kind::Network);
    }
    void aDoubtfulAnswerIsNoListing()
    {
        QFETCH(Answer, answer);
        QFETCH(Kind, kind);
        FaultyServer server(always(answer));

        const Outcome<QList<FileEntry>> entries = storeAt(server.url())->list(QString());

        QVERIFY(!entries);
        QVERIFY2(entries.error().kind == kind, qPrintable(entries.error().sentence));
    }

    void aListingWithoutItsLastPieceIsNone()
    {
        const QByteArray head = "HTTP/1.1 207 Multi-Status\r\nTransfer-Encoding: chunked\r\n\r\n";
        FaultyServer server(
            always({ { head + "50\r\n" + listing.first(0x50) + "\r\n" }, Then::Close }));

        const Outcome<QList<FileEntry>> entries = storeAt(server.url())->list(QString());

        // Which of the two it is depends on whether the break is seen before the end of the text.
        QVERIFY(!entries);
        const Kind kind = entries.error().kind;
        QVERIFY(kind == Kind::Network || kind == Kind::NotUnderstood);
    }

    void addressesInAListingAreNotFollowed()
    {
        FaultyServer elsewhere(always(FaultyServer::answer("207 MS", listing)));
        const QByteArray away = QByteArray(listing).replace("/dav/", elsewhere.url().toEncoded());
        FaultyServer server(always(FaultyServer::answer("207 MS", away)));

        QVERIFY(storeAt(server.url())->list(QString()));

        QCOMPARE(elsewhere.connections(), 0);
    }

    void aFileThatIsNotWholeIsAnError_data()
    {
        QTest::addColumn<Answer>("answer");
        QTest::addColumn<Kind>("kind");
        const QByteArray head = "HTTP/1.1 200 OK\r\n";
        const auto row = [](const char* name, const Answer& answer, Kind kind) {
            QTest::newRow(name) << answer << kind;
        };
        row("half a body", { { head + "Content-Length: 100\r\n\r\nhalf" }, Then::Close },
            Kind::Network);
        row("half a body of the last answer",
            { { head + "Connection: close\r\nContent-Length: 100\r\n\r\nhalf" }, Then::Close },
            Kind::Network);
        row("announced too long", { { head + "Content-Length: 1001\r\n\r\n" } },
            Kind::NotUnderstood);
        row("without an end", { { head + "\r\n" }, Then::SendForEver }, Kind::NotUnderstood);
        row("a part", FaultyServer::answer("206 Partial Content", "half"), Kind::NotUnderstood);
        row("coded", FaultyServer::answer("200 OK", "\x1f\x8b", { "Content-Encoding: gzip" }),
            Kind::NotUnderstood);
    }
    void aFileThatIsNotWholeIsAnError()
    {
        QFETCH(Answer, answer);
        QFETCH(Kind, kind);
        FaultyServer server(always(answer));
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);

        const Outcome<Download> download
            = storeAt(server.url())->get(QStringLiteral("a"), buffer, 1000);

        QVERIFY(!download);
        QVERIFY2(download.error().kind == kind, qPrintable(download.error().sentence));
        QVERIFY(buffer.size() <= 1000);
    }

    void anEndlessSuccessIsNone()
    {
        FaultyServer server(always({ { "HTTP/1.1 201 Created\r\n\r\n" }, Then::SendForEver }));

        const Outcome<> stored = storeAt(server.url())->put(QStringLiteral("a"), "bytes");

        QCOMPARE(stored.error().kind, Kind::NotUnderstood);
    }

    void anEndlessRefusalIsGivenUp()
    {
        const QByteArray head = "HTTP/1.1 503 Unavailable\r\nRetry-After: 5\r\n\r\n";
        FaultyServer server(always({ { head }, Then::SendForEver }));

        const Outcome<> stored = storeAt(server.url())->put(QStringLiteral("a"), "bytes");

        QCOMPARE(stored.error().kind, Kind::Busy);
        QCOMPARE(stored.error().retryAfter, 5s);
    }

    void aSilentServerIsGivenUp()
    {
        FaultyServer server(always({ { "HTTP/1.1 207 MS\r\n\r\n" + listing } }));

        const Outcome<QList<FileEntry>> entries
            = storeAt(server.url(), { "Test/1", 100ms })->list(QString());

        QCOMPARE(entries.error().kind, Kind::Network);
    }

    void aSlowServerIsWaitedForWhileItSpeaks()
    {
        const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Length: 8\r\n\r\n";
        FaultyServer server(always({ { head, "1", "2", "3", "4", "5", "6", "7", "8" } }));
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);

        const auto store = storeAt(server.url(), { "Test/1", FaultyServer::pieceInterval * 7ms });
        QVERIFY(store->get(QStringLiteral("a"), buffer, 100));

        QCOMPARE(buffer.data(), QByteArray("12345678"));
    }

    void aServerThatIsNotThereIsANetworkError()
    {
        QUrl nowhere;
        {
            const FaultyServer server(always({}));
            nowhere = server.url();
        }

        for (const std::optional<FileError>& error : tryAll(*storeAt(nowhere)).all())
            QCOMPARE(error->kind, Kind::Network);
    }

    void credentialsAreNotSentInTheClear()
    {
        for (const std::optional<FileError>& error :
            tryAll(*storeAt(QUrl(QStringLiteral("http://cloud.invalid/dav/")))).all())
            QCOMPARE(error->kind, Kind::Untrusted);
    }

    void aCallFromAnotherThreadEndsTheWait()
    {
        Waiting waiting;
        QVERIFY(waiting.untilAsked());

        waiting.cancellation->cancel();

        QVERIFY(waiting.untilEnded());
        QCOMPARE(waiting.errors[0]->kind, Kind::Cancelled);
        QCOMPARE(waiting.errors[1]->kind, Kind::Cancelled);
        QCOMPARE(waiting.requests(), 1);
    }

    void everyRequestSaysWhatItIs()
    {
        FaultyServer server(
            always(FaultyServer::answer("200 OK", {}, { "Set-Cookie: session=1; Path=/" })));

        tryAll(*storeAt(server.url()));

        const QList<FaultyServer::Request> requests = server.requests();
        QByteArrayList lines;
        for (const FaultyServer::Request& request : requests) {
            lines.append(request.verb + ' ' + request.target);
            QCOMPARE(request.header("Authorization"), "Basic " + QByteArray("ann:pass").toBase64());
            QCOMPARE(request.header("User-Agent"), QByteArray("Vexilo/1.2"));
            QCOMPARE(request.header("Accept-Encoding"), QByteArray("identity"));
            QCOMPARE(request.header("Cache-Control"), QByteArray("no-cache"));
            QCOMPARE(request.header("Cookie"), QByteArray());
        }
        QCOMPARE(lines,
            (QByteArrayList { "PROPFIND /dav/", "GET /dav/a%20b", "PUT /dav/a%20b", "MKCOL /dav/c/",
                "DELETE /dav/a%20b" }));
        QCOMPARE(requests.first().header("Depth"), QByteArray("1"));
        QCOMPARE(requests.last().header("X-NC-Skip-Trashbin"), QByteArray("true"));
        QCOMPARE(server.connections(), 1);
    }

    void theTrashIsSkippedOnlyWhereThatIsWished()
    {
        FaultyServer server(always(FaultyServer::answer("204 No Content")));

        QVERIFY(storeAt(server.url())->remove(QStringLiteral("a"), Trash::Use));

        QCOMPARE(server.requests().first().header("X-NC-Skip-Trashbin"), QByteArray());
    }
};

QTEST_GUILESS_MAIN(FaultsTest)
#include "FaultsTest.moc"
