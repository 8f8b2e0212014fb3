#include "OnlineAccountChoice.h"

#include <QTest>

using namespace mirror;

namespace {

const QString service = QStringLiteral("org.gnome.OnlineAccounts");

QString pathOf(const QString& id)
{
    return QLatin1String("/org/gnome/OnlineAccounts/Accounts/") + id;
}

/// Objects, one account after the other.
class Accounts {
public:
    Accounts& add(const QString& id, const QVariantMap& account = {}, const QVariantMap& files = {})
    {
        QVariantMap all { { QStringLiteral("Id"), id },
            { QStringLiteral("Identity"), QStringLiteral("ann") } };
        all.insert(account);
        QVariantMap allFiles { { QStringLiteral("Uri"),
            QStringLiteral("davs://ann@cloud.example/dav") } };
        allFiles.insert(files);
        m_objects.insert(QDBusObjectPath(pathOf(id)),
            { { service + QLatin1String(".Account"), all },
                { service + QLatin1String(".Files"), allFiles },
                { service + QLatin1String(".PasswordBased"), {} } });
        return *this;
    }
    Accounts& without(const QString& id, const QString& interface)
    {
        m_objects[QDBusObjectPath(pathOf(id))].remove(service + QLatin1Char('.') + interface);
        return *this;
    }

    [[nodiscard]] QString chosen(const QString& current = {}) const
    {
        const auto account = chooseOnlineAccount(m_objects, pathOf(current));
        return account ? account->path.section(QLatin1Char('/'), -1) : QString();
    }
    [[nodiscard]] AccountFinding finding() const
    {
        return chooseOnlineAccount(m_objects, QString()).value_or(OnlineAccount()).finding;
    }

private:
    BusObjects m_objects;
};

const QString first = QStringLiteral("account_1");
const QString second = QStringLiteral("account_2");
const QVariantMap off { { QStringLiteral("FilesDisabled"), true } };
const QVariantMap unsafe { { QStringLiteral("Uri"), QStringLiteral("dav://cloud.example/") } };

} // namespace

class OnlineAccountChoiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutAccountsThereIsNone() { QCOMPARE(Accounts().chosen(), QString()); }

    void theAccountThatWasSetUpFirstIsChosen()
    {
        QCOMPARE(Accounts().add(second).add(first).chosen(), first);
    }

    void theCurrentAccountIsKept()
    {
        QCOMPARE(Accounts().add(first).add(second).chosen(second), second);
        QCOMPARE(Accounts().add(first).chosen(second), first);
    }

    void oneThatWaitsForTheUserIsKept()
    {
        const QVariantMap waits { { QStringLiteral("AttentionNeeded"), true } };
        QCOMPARE(Accounts().add(first, waits).add(second).chosen(), first);
    }

    void onlyAccountsWithFilesAndAPasswordCount()
    {
        for (const char* interface : { "Account", "Files", "PasswordBased" }) {
            Accounts accounts;
            accounts.add(first).without(first, QString::fromLatin1(interface));
            QCOMPARE(accounts.chosen(), QString());
            QCOMPARE(accounts.add(second).chosen(), second);
        }
    }

    void oneThatCannotServeMakesWayForOneThatDoes()
    {
        QCOMPARE(Accounts().add(first, off).add(second).chosen(first), second);
        QCOMPARE(Accounts().add(first, {}, unsafe).add(second).chosen(first), second);
    }

    void oneThatCannotServeSaysWhyWhereThereIsNoOther()
    {
        QVERIFY(
            Accounts().add(first, off).finding().problem.contains(QStringLiteral("switched off")));
        QVERIFY(Accounts()
                    .add(first, off)
                    .without(first, QStringLiteral("Files"))
                    .finding()
                    .problem.contains(QStringLiteral("switched off")));
        QVERIFY(
            Accounts().add(first, {}, unsafe).finding().problem.contains(QStringLiteral("https")));
        const QVariantMap elsewhere { { QStringLiteral("Uri"), QStringLiteral("smb://server/") } };
        QVERIFY(Accounts()
                    .add(first, {}, elsewhere)
                    .finding()
                    .problem.contains(QStringLiteral("WebDAV")));
    }

    void theUserIsTheIdentityWithoutTheServer_data()
    {
        QTest::addColumn<QString>("identity");
        QTest::addColumn<QString>("uri");
        QTest::addColumn<QString>("user");
        const auto row
            = [](const char* name, const char* identity, const char* uri, const char* user) {
                  QTest::newRow(name) << QString::fromLatin1(identity) << QString::fromLatin1(uri)
                                      << QString::fromLatin1(user);
              };
        row("the same", "ann", "davs://ann@cloud.example/", "ann");
        row("an address as a name", "ann@mail.example", "davs://ann%40mail.example@cloud.example/",
            "ann@mail.example");
        row("an address, and none in the uri", "ann@cloud.example", "davs://cloud.example/",
            "ann@cloud.example");
        row("with the server", "ann@cloud.example", "davs://ann@cloud.example/", "ann");
        row("with server and port", "ann@cloud.example:8443", "davs://ann@cloud.example:8443/",
            "ann");
        row("with another server", "ann@mail.example", "davs://ann@cloud.example/",
            "ann@mail.example");
        row("another", "bob", "davs://ann@cloud.example/", "bob");
        row("none", "", "davs://ann@cloud.example/", "ann");
    }

    void theUserIsTheIdentityWithoutTheServer()
    {
        QFETCH(const QString, identity);
        QFETCH(const QString, uri);
        QFETCH(const QString, user);

        const AccountFinding finding = Accounts()
                                           .add(first, { { QStringLiteral("Identity"), identity } },
                                               { { QStringLiteral("Uri"), uri } })
                                           .finding();

        QVERIFY(finding.account);
        QCOMPARE(finding.account->user, user);
    }
};

QTEST_GUILESS_MAIN(OnlineAccountChoiceTest)
#include "OnlineAccountChoiceTest.moc"
