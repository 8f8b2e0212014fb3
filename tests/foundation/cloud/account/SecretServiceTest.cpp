#include "SecretService.h"
#include "DBusMock.h"
#include "PrivateBus.h"

#include <QCoreApplication>
#include <QTest>

#include <optional>

using namespace mirror;

/// Unlocking, which a user answers in a window of the keyring's own: here, one that is played.
class SecretServiceTest : public QObject {
    Q_OBJECT

private:
    const QDBusConnection m_bus = QDBusConnection::sessionBus();

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_bus.isConnected()); }

    void theUserIsAskedToUnlockAndDecides_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<bool>("staysLocked");
        QTest::newRow("unlocks") << QStringLiteral("unlock") << false;
        QTest::newRow("dismisses") << QStringLiteral("dismiss") << true;
        QTest::newRow("never sees it") << QStringLiteral("break") << true;
    }

    void theUserIsAskedToUnlockAndDecides()
    {
        QFETCH(const QString, answer);
        QFETCH(const bool, staysLocked);
        DBusMock keyring(
            m_bus, secretService, secretServicePath, QStringLiteral("secret_service.py"));
        keyring.start();
        keyring.tell(QStringLiteral("AnswerPrompt"), { answer });

        QObject context;
        std::optional<bool> isLocked;
        unlockSecret(m_bus, QStringLiteral("ann@cloud.example"), &context,
            [&](bool still) { isLocked = still; });

        QTRY_COMPARE(isLocked, std::optional(staysLocked));
        QCOMPARE(keyring.tell(QStringLiteral("Unlocked")),
            QStringList { secretServicePath + QLatin1String("/collection/login/1") });
    }

    void withoutAKeyringNothingIsLocked()
    {
        QObject context;
        std::optional<bool> isLocked;

        unlockSecret(m_bus, QStringLiteral("ann@cloud.example"), &context,
            [&](bool still) { isLocked = still; });

        QTRY_COMPARE(isLocked, std::optional(false));
    }
};

int main(int argc, char* argv[])
{
    const PrivateBus bus;
    const QCoreApplication application(argc, argv);
    SecretServiceTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "SecretServiceTest.moc"
