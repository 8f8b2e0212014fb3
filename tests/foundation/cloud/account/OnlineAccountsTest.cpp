#include "CloudAccounts.h"
#include "FakeOnlineAccounts.h"
#include "PrivateBus.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <thread>

using namespace mirror;
using namespace std::chrono_literals;

namespace {

const QString id = QStringLiteral("account_1700000000_0");
const QString laterId = QStringLiteral("account_1800000000_0");
const QString password = QStringLiteral("Ziegenkäse %41");

FakeOnlineAccounts::Account laterAccount()
{
    FakeOnlineAccounts::Account account;
    account.id = laterId;
    account.identity = QStringLiteral("bob");
    account.uri = QStringLiteral("davs://bob@other.example/");
    return account;
}

QString user(const CloudAccounts& accounts)
{
    return accounts.account() ? accounts.account()->user : QString();
}

} // namespace

/// The accounts of the desktop, which come, change and go while the program runs.
class OnlineAccountsTest : public QObject {
    Q_OBJECT

private:
    const QDBusConnection m_bus = QDBusConnection::sessionBus();
    QTemporaryDir m_folder;
    std::unique_ptr<FakeOnlineAccounts> m_desktop;
    std::shared_ptr<Cancellation> m_cancellation;
    std::unique_ptr<CloudAccounts> m_accounts;

    [[nodiscard]] AccountManners manners() const
    {
        AccountManners manners;
        manners.iniFile = m_folder.filePath(QStringLiteral("cloud.ini"));
        manners.cancellation = m_cancellation;
        return manners;
    }

    void begin(const AccountManners& manners)
    {
        m_accounts = std::make_unique<CloudAccounts>(manners);
        m_accounts->start();
    }

    [[nodiscard]] AccountState state() const { return m_accounts->state(); }

    /// The password, or the sentence that says why there is none.
    [[nodiscard]] QString given()
    {
        const Outcome<QString> outcome = m_accounts->password();
        return outcome ? *outcome : outcome.error().sentence;
    }

    [[nodiscard]] int calls(const QString& method) const
    {
        return static_cast<int>(
            m_desktop->tell(QStringLiteral("ArgumentsOf"), { id, method }).size());
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_bus.isConnected());
        m_desktop = std::make_unique<FakeOnlineAccounts>(m_bus);
        m_desktop->start();
    }

    void init() { m_cancellation = std::make_shared<Cancellation>(); }

    void cleanup()
    {
        m_accounts.reset();
        for (const QString& one : m_desktop->tell(QStringLiteral("AccountIds")))
            m_desktop->tell(QStringLiteral("RemoveAccount"), { one });
    }

    void cleanupTestCase() { m_desktop.reset(); }

    void nothingIsKnownBeforeTheFirstAnswer()
    {
        begin(manners());

        QCOMPARE(state(), AccountState::Unknown);
        QTRY_COMPARE(state(), AccountState::NoAccount);
        QVERIFY(m_accounts->problem().isEmpty());
        QCOMPARE(m_accounts->password().error().kind, FileError::Kind::NotFound);
    }

    void anAccountThatIsThereServes()
    {
        m_desktop->add({});

        begin(manners());

        QSignalSpy changes(m_accounts.get(), &CloudAccounts::changed);
        QVERIFY(changes.wait());
        QCOMPARE(state(), AccountState::Available);
        QCOMPARE(m_accounts->account()->root,
            QUrl(QStringLiteral("https://cloud.example/remote.php/webdav/")));
        QCOMPARE(user(*m_accounts), QStringLiteral("ann"));
        QCOMPARE(m_accounts->account()->selfSigned, WebDavAccount::SelfSigned::Refuse);
        QCOMPARE(given(), password);
        QCOMPARE(
            m_desktop->tell(QStringLiteral("ArgumentsOf"), { id, QStringLiteral("GetPassword") }),
            QStringList { QStringLiteral("''") });
    }

    void anAccountIsChosenByWhatItCanDo_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("the older kind") << QStringLiteral("owncloud");
        QTest::newRow("the newer kind") << QStringLiteral("webdav");
        QTest::newRow("one nobody knows") << QStringLiteral("another");
    }

    void anAccountIsChosenByWhatItCanDo()
    {
        QFETCH(const QString, kind);
        FakeOnlineAccounts::Account account;
        account.kind = kind;
        account.acceptsErrors = true;
        m_desktop->add(account);

        begin(manners());

        QTRY_COMPARE(state(), AccountState::Available);
        QCOMPARE(m_accounts->account()->selfSigned, WebDavAccount::SelfSigned::AcceptPinned);
    }

    void anAccountThatIsAddedAndRemovedIsFollowed()
    {
        begin(manners());
        QTRY_COMPARE(state(), AccountState::NoAccount);

        m_desktop->add({});
        QTRY_COMPARE(state(), AccountState::Available);

        m_desktop->tell(QStringLiteral("RemoveAccount"), { id });
        QTRY_COMPARE(state(), AccountState::NoAccount);
        QVERIFY(!m_accounts->account());
    }

    void anOlderAccountThatIsAddedLaterIsNotMovedTo()
    {
        m_desktop->add(laterAccount());
        begin(manners());
        QTRY_COMPARE(user(*m_accounts), QStringLiteral("bob"));

        m_desktop->add({});
        m_desktop->tell(QStringLiteral("SetAttentionNeeded"), { laterId });

        QTRY_COMPARE(state(), AccountState::NeedsAttention);
        QCOMPARE(user(*m_accounts), QStringLiteral("bob"));

        m_desktop->tell(QStringLiteral("RemoveAccount"), { laterId });
        QTRY_COMPARE(user(*m_accounts), QStringLiteral("ann"));
    }

    void anAccountThatNeedsAttentionServesAgainOnceTheUserSignedIn()
    {
        m_desktop->add({});
        begin(manners());
        QTRY_COMPARE(state(), AccountState::Available);

        m_desktop->tell(QStringLiteral("SetAttentionNeeded"), { id });
        QTRY_COMPARE(state(), AccountState::NeedsAttention);
        QVERIFY(m_accounts->problem().contains(QStringLiteral("ann@shown")));
        QCOMPARE(m_accounts->password().error().kind, FileError::Kind::Unauthorised);
        QCOMPARE(calls(QStringLiteral("GetPassword")), 0);

        m_desktop->tell(QStringLiteral("SignIn"), { id, QStringLiteral("another") });
        QTRY_COMPARE(state(), AccountState::Available);
        QVERIFY(m_accounts->problem().isEmpty());
        QCOMPARE(given(), QStringLiteral("another"));
    }

    void filesThatAreSwitchedOffAndOnAgainAreFollowed()
    {
        m_desktop->add({});
        begin(manners());
        QTRY_COMPARE(state(), AccountState::Available);

        m_desktop->tell(QStringLiteral("SwitchFilesOff"), { id });
        QTRY_COMPARE(state(), AccountState::NeedsAttention);
        QVERIFY(m_accounts->problem().contains(QStringLiteral("switched off")));

        m_desktop->tell(QStringLiteral("SwitchFilesOn"), { id });
        QTRY_COMPARE(state(), AccountState::Available);
    }

    void aServiceThatVanishesTakesItsAccountsWithItUntilItIsBack()
    {
        m_desktop->add({});
        begin(manners());
        QTRY_COMPARE(state(), AccountState::Available);

        m_desktop->stop();
        QTRY_COMPARE(state(), AccountState::NoAccount);

        m_desktop->start();
        m_desktop->add({});
        QTRY_COMPARE(state(), AccountState::Available);
    }

    void aRefusedPasswordIsToldToTheDesktopOnce()
    {
        m_desktop->add({});
        begin(manners());
        QTRY_COMPARE(state(), AccountState::Available);
        QVERIFY(m_accounts->password());

        QList<AccountState> states;
        connect(m_accounts.get(), &CloudAccounts::changed, this, [&] { states.append(state()); });

        m_accounts->refused();
        QCOMPARE(state(), AccountState::NeedsAttention);
        m_accounts->refused();

        // The desktop finds nothing wrong, and the password is what it was.
        QTRY_COMPARE(calls(QStringLiteral("GetPassword")), 2);
        QCOMPARE(calls(QStringLiteral("EnsureCredentials")), 1);
        QCOMPARE(m_accounts->password().error().kind, FileError::Kind::Unauthorised);

        m_desktop->tell(QStringLiteral("SetPassword"), { id, QStringLiteral("another") });
        m_desktop->tell(QStringLiteral("Touch"), { id });
        QTRY_COMPARE(states, (QList { AccountState::NeedsAttention, AccountState::Available }));
        QCOMPARE(calls(QStringLiteral("EnsureCredentials")), 1);
    }

    void aRefusedPasswordThatIsReplacedIsGivenAgain()
    {
        m_desktop->add({});
        begin(manners());
        QTRY_COMPARE(state(), AccountState::Available);
        QVERIFY(m_accounts->password());
        m_desktop->tell(QStringLiteral("SetPassword"), { id, QStringLiteral("another") });

        m_accounts->refused();

        QTRY_COMPARE(state(), AccountState::Available);
        QCOMPARE(given(), QStringLiteral("another"));

        // Those are other credentials: once more.
        m_accounts->refused();
        QTRY_COMPARE(calls(QStringLiteral("EnsureCredentials")), 2);
    }

    void anotherPasswordIsToldOfBeforeTheServerRefusesTheOldOne()
    {
        m_desktop->add({});
        begin(manners());
        QTRY_COMPARE(state(), AccountState::Available);
        QVERIFY(m_accounts->password());
        QSignalSpy changes(m_accounts.get(), &CloudAccounts::changed);

        m_desktop->tell(QStringLiteral("SignIn"), { id, QStringLiteral("another") });

        QVERIFY(changes.wait());
        QCOMPARE(state(), AccountState::Available);
    }

    void aPasswordThatTheDesktopDoesNotGiveNeedsAttention()
    {
        FakeOnlineAccounts::Account account;
        account.password.clear();
        m_desktop->add(account);
        begin(manners());
        QTRY_COMPARE(state(), AccountState::Available);
        QSignalSpy changes(m_accounts.get(), &CloudAccounts::changed);

        const Outcome<QString> outcome = m_accounts->password();

        QCOMPARE(outcome.error().kind, FileError::Kind::Unauthorised);
        QCOMPARE(state(), AccountState::NeedsAttention);
        QCOMPARE(outcome.error().sentence, m_accounts->problem());
        QCOMPARE(changes.size(), 0); // never from within a call
        QVERIFY(changes.wait());
    }

    void aDesktopThatIsSilentIsNotWaitedForLongerThanAsked()
    {
        m_desktop->add({});
        AccountManners brief = manners();
        brief.passwordLimit = 50ms;
        begin(brief);
        QTRY_COMPARE(state(), AccountState::Available);

        m_desktop->pause();
        QCOMPARE(m_accounts->password().error().kind, FileError::Kind::Unauthorised);
        QCOMPARE(state(), AccountState::NeedsAttention);

        // The late answer is dropped, but from now on there are answers again.
        m_desktop->goOn();
        QTRY_COMPARE(state(), AccountState::Available);
    }

    void aDesktopThatIsSilentAtTheStartCountsAsNone()
    {
        m_desktop->add({});
        m_desktop->pause();
        AccountManners brief = manners();
        brief.answerLimit = 50ms;

        begin(brief);

        QTRY_COMPARE(state(), AccountState::NoAccount);
        m_desktop->goOn();
    }

    void waitingForAPasswordIsEndedByTheCancellation()
    {
        m_desktop->add({});
        begin(manners());
        QTRY_COMPARE(state(), AccountState::Available);
        m_desktop->pause();

        std::thread quitting([this] { m_cancellation->cancel(); });
        const Outcome<QString> outcome = m_accounts->password();
        quitting.join();

        QCOMPARE(outcome.error().kind, FileError::Kind::Cancelled);
        QCOMPARE(state(), AccountState::Available);
        m_desktop->goOn();
    }

    void aServiceThatIsInstalledIsStarted()
    {
        const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
        const PrivateBus bus({ { FakeOnlineAccounts::service(),
            DBusMock::command(FakeOnlineAccounts::templateName()) } });
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        const QString name = QStringLiteral("another");
        AccountManners elsewhere = manners();
        elsewhere.bus = QDBusConnection::connectToBus(bus.address(), name);

        begin(elsewhere);
        QTRY_COMPARE(state(), AccountState::NoAccount);
        QVERIFY(elsewhere.bus->interface()->isServiceRegistered(FakeOnlineAccounts::service()));

        const FakeOnlineAccounts desktop(*elsewhere.bus);
        desktop.add({});
        QTRY_COMPARE(state(), AccountState::Available);
        m_accounts.reset();
        QDBusConnection::disconnectFromBus(name);
    }

    void theFileServesWhereTheDesktopHasNoAccount()
    {
        QFile file(manners().iniFile);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("url=https://elsewhere.example/\nuser=eve\n");
        file.close();
        begin(manners());
        QTRY_COMPARE(user(*m_accounts), QStringLiteral("eve"));

        m_desktop->add({});
        QTRY_COMPARE(user(*m_accounts), QStringLiteral("ann"));
        QCOMPARE(state(), AccountState::Available);

        m_desktop->tell(QStringLiteral("SwitchFilesOff"), { id });
        QTRY_COMPARE(user(*m_accounts), QStringLiteral("eve"));
        QVERIFY(file.remove());
    }

    void anAccountThatCannotBeUsedSaysWhy()
    {
        FakeOnlineAccounts::Account account;
        account.uri = QStringLiteral("dav://ann@cloud.example/");
        m_desktop->add(account);

        begin(manners());

        QTRY_COMPARE(state(), AccountState::NeedsAttention);
        QVERIFY(!m_accounts->account());
        QVERIFY(m_accounts->problem().contains(QStringLiteral("https")));
    }
};

int main(int argc, char* argv[])
{
    const PrivateBus bus;
    const QCoreApplication application(argc, argv);
    OnlineAccountsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "OnlineAccountsTest.moc"
