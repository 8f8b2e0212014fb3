#include "ApacheServer.h"
#include "WebDavStore.h"

#include <QBuffer>
#include <QTest>

using namespace mirror;
using Kind = FileError::Kind;
using SelfSigned = WebDavAccount::SelfSigned;

/// Who is let in, and whose server is believed.
class AccountTest : public QObject {
    Q_OBJECT

private:
    ApacheServer m_apache;

    [[nodiscard]] WebDavAccount account(
        const QUrl& root, SelfSigned selfSigned, const QByteArray& pin = {}) const
    {
        return { root, ApacheServer::user(), ApacheServer::password(), selfSigned, pin };
    }

    [[nodiscard]] static std::unique_ptr<WebDavStore> store(const WebDavAccount& account)
    {
        return std::make_unique<WebDavStore>(account, WebDavManners { "Test/1" });
    }

    /// The kind of error that a listing of the root ends in; nothing if it succeeds.
    [[nodiscard]] static std::optional<Kind> failureOf(WebDavStore& store)
    {
        const Outcome<QList<FileEntry>> entries = store.list(QString());
        return entries ? std::nullopt : std::optional(entries.error().kind);
    }

private Q_SLOTS:
    void aWrongPasswordIsUnauthorisedForEveryRequest()
    {
        WebDavAccount wrong = account(m_apache.plainUrl(), SelfSigned::Refuse);
        wrong.password = QStringLiteral("wrong");
        const auto wrongStore = store(wrong);
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        const QString name = QStringLiteral("name");

        QCOMPARE(wrongStore->list(QString()).error().kind, Kind::Unauthorised);
        QCOMPARE(wrongStore->get(name, buffer, 1).error().kind, Kind::Unauthorised);
        QCOMPARE(wrongStore->put(name, "bytes").error().kind, Kind::Unauthorised);
        QCOMPARE(wrongStore->makeCollection(name).error().kind, Kind::Unauthorised);
        QCOMPARE(wrongStore->remove(name, Trash::Skip).error().kind, Kind::Unauthorised);
        QCOMPARE(wrongStore->list(QString()).error().status, 401);
    }

    void aFileThatTheServerFindsTooLargeIsTooLarge()
    {
        const auto plain = store(account(m_apache.plainUrl(), SelfSigned::Refuse));

        const Outcome<> stored
            = plain->put(QStringLiteral("big"), QByteArray(ApacheServer::largestBody + 1, 'x'));

        QCOMPARE(stored.error().kind, Kind::TooLarge);
        QCOMPARE(stored.error().status, 413);
    }

    void theServersClockIsRead()
    {
        const auto plain = store(account(m_apache.plainUrl(), SelfSigned::Refuse));
        QVERIFY(!plain->serverDate());

        QVERIFY(!failureOf(*plain));

        QVERIFY(plain->serverDate());
        QVERIFY(std::abs(plain->serverDate()->secsTo(QDateTime::currentDateTimeUtc())) < 60);
    }

    void aSelfSignedCertificateIsRefused()
    {
        const auto refusing = store(account(m_apache.secureUrl(), SelfSigned::Refuse));

        QCOMPARE(failureOf(*refusing), Kind::Untrusted);
        QVERIFY(refusing->certificatePin().isEmpty());
    }

    void aPinAloneDoesNotMakeASelfSignedCertificateTrusted()
    {
        const auto refusing = store(
            account(m_apache.secureUrl(), SelfSigned::Refuse, m_apache.certificateDigest()));

        QCOMPARE(failureOf(*refusing), Kind::Untrusted);
    }

    void theFirstSelfSignedCertificateIsPinnedWhereTheAccountAcceptsIt()
    {
        const auto accepting = store(account(m_apache.secureUrl(), SelfSigned::AcceptPinned));

        QVERIFY(!failureOf(*accepting));

        QCOMPARE(accepting->certificatePin(), m_apache.certificateDigest());
    }

    void thePinnedCertificateIsTrusted()
    {
        const auto pinned = store(account(m_apache.secureUrl(), SelfSigned::AcceptPinned,
            m_apache.certificateDigest().toUpper()));

        QVERIFY(!failureOf(*pinned));
    }

    void anotherCertificateThanThePinnedOneIsNot()
    {
        const QByteArray other(64, 'a');
        const auto pinned = store(account(m_apache.secureUrl(), SelfSigned::AcceptPinned, other));

        QCOMPARE(failureOf(*pinned), Kind::Untrusted);
        QCOMPARE(pinned->certificatePin(), other);
    }

    void anotherCertificateIsRefusedWhateverIsOrIsNotWrongWithIt()
    {
        CertificateTrust trust(
            account(m_apache.secureUrl(), SelfSigned::AcceptPinned, QByteArray(64, 'a')));
        const QSslCertificate other = m_apache.certificate();

        QVERIFY(trust.overlooked({ QSslError(QSslError::SelfSignedCertificate, other) }).isEmpty());
        QVERIFY(!trust.accepts(other));
    }

    void anExpiredCertificateIsOverlookedOnlyWhereItIsThePinnedOne()
    {
        const QList<QSslError> errors { QSslError(QSslError::SelfSignedCertificate,
                                            m_apache.certificate()),
            QSslError(QSslError::CertificateExpired, m_apache.certificate()) };
        const CertificateTrust first(account(m_apache.secureUrl(), SelfSigned::AcceptPinned));
        const CertificateTrust pinned(
            account(m_apache.secureUrl(), SelfSigned::AcceptPinned, m_apache.certificateDigest()));

        QVERIFY(first.overlooked(errors).isEmpty());
        QCOMPARE(pinned.overlooked(errors), errors);
    }

    void aCertificateThatChangesIsNoLongerTrusted()
    {
        const auto accepting = store(account(m_apache.secureUrl(), SelfSigned::AcceptPinned));
        QVERIFY(!failureOf(*accepting));
        const QByteArray first = m_apache.certificateDigest();

        m_apache.changeCertificate();

        QVERIFY(m_apache.certificateDigest() != first);
        QCOMPARE(failureOf(*accepting), Kind::Untrusted);
        QCOMPARE(failureOf(*accepting), Kind::Untrusted);
        QCOMPARE(accepting->certificatePin(), first);
    }

    void aServerWithoutTlsIsNotReachedOverIt()
    {
        QUrl mixed = m_apache.secureUrl();
        mixed.setPort(m_apache.plainUrl().port());

        const auto accepting = store(account(mixed, SelfSigned::AcceptPinned));

        QCOMPARE(failureOf(*accepting), Kind::Network);
    }
};

QTEST_GUILESS_MAIN(AccountTest)
#include "AccountTest.moc"
