#include "NSUbiquitousKeyValueStore.h"

#include <QCoreApplication>
#include <QFile>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

class NSUbiquitousKeyValueStoreTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    const QString m_key = QStringLiteral("icloud_sync");

    QString file() const { return m_folder->filePath(QStringLiteral("cloud-values.ini")); }

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void aMissingValueReadsAsFalse()
    {
        const NSUbiquitousKeyValueStore store(file());

        QVERIFY(!store.boolForKey(m_key));
    }

    void readingMakesNoFile()
    {
        (void)NSUbiquitousKeyValueStore(file()).boolForKey(m_key);

        QVERIFY(!QFile::exists(file()));
    }

    void aValueIsReadBackAtOnce()
    {
        NSUbiquitousKeyValueStore store(file());

        store.setBool(true, m_key);

        QVERIFY(store.boolForKey(m_key));
    }

    void aValueIsInTheFileWhenItsSettingReturns()
    {
        NSUbiquitousKeyValueStore store(file());

        store.setBool(true, m_key);

        QVERIFY(NSUbiquitousKeyValueStore(file()).boolForKey(m_key));
    }

    void theLastValueIsTheOneThatIsKept()
    {
        {
            NSUbiquitousKeyValueStore store(file());
            store.setBool(true, m_key);
            store.setBool(false, m_key);
        }

        QVERIFY(!NSUbiquitousKeyValueStore(file()).boolForKey(m_key));
    }

    void keysAreIndependent()
    {
        NSUbiquitousKeyValueStore(file()).setBool(true, m_key);
        NSUbiquitousKeyValueStore(file()).setBool(true, QStringLiteral("other"));
        NSUbiquitousKeyValueStore(file()).setBool(false, QStringLiteral("other"));

        QVERIFY(NSUbiquitousKeyValueStore(file()).boolForKey(m_key));
    }

    void whatIsNoBooleanReadsAsFalse()
    {
        QFile copy(file());
        QVERIFY(copy.open(QIODevice::WriteOnly));
        copy.write("[General]\nicloud_sync=perhaps\n");
        copy.close();

        QVERIFY(!NSUbiquitousKeyValueStore(file()).boolForKey(m_key));
    }

    void aChoiceIsPendingUntilItWasCarried()
    {
        const QDateTime before = QDateTime::currentDateTimeUtc();
        NSUbiquitousKeyValueStore(file()).setBool(true, m_key);
        NSUbiquitousKeyValueStore store(file());

        const QList<UbiquitousChange> pending = store.pendingChanges();

        QCOMPARE(pending.size(), 1);
        QCOMPARE(pending.first().key, m_key);
        QCOMPARE(pending.first().value, true);
        QVERIFY(pending.first().madeAt >= before);
        store.didCarry(pending.first());
        QVERIFY(store.pendingChanges().isEmpty());
        QVERIFY(NSUbiquitousKeyValueStore(file()).pendingChanges().isEmpty());
    }

    void aChoiceMadeWhileAnotherIsCarriedStaysPending()
    {
        NSUbiquitousKeyValueStore store(file());
        store.setBool(true, m_key);
        const UbiquitousChange carried = store.pendingChanges().first();
        store.setBool(false, m_key); // in the same millisecond, too

        store.didCarry(carried);

        QCOMPARE(store.pendingChanges().size(), 1);
        QVERIFY(store.pendingChanges().first().madeAt > carried.madeAt);
    }

    void aChoiceOfAnotherDeviceIsAdopted()
    {
        NSUbiquitousKeyValueStore store(file());
        const QSignalSpy changed(&store, &NSUbiquitousKeyValueStore::didChangeExternally);

        store.adopt(true, m_key);
        store.adopt(true, m_key);

        QVERIFY(store.boolForKey(m_key));
        QVERIFY(store.pendingChanges().isEmpty());
        QCOMPARE(changed.size(), 1);
        QVERIFY(NSUbiquitousKeyValueStore(file()).boolForKey(m_key));
    }

    void aChoiceMadeHereIsKeptOverThatOfAnotherDevice()
    {
        NSUbiquitousKeyValueStore store(file());
        store.setBool(false, m_key);

        store.adopt(true, m_key);

        QVERIFY(!store.boolForKey(m_key));
        QCOMPARE(store.pendingChanges().size(), 1);
    }

    void onlyAChoiceMadeHereIsToldAsOne()
    {
        NSUbiquitousKeyValueStore store(file());
        const QSignalSpy here(&store, &NSUbiquitousKeyValueStore::changedHere);

        store.adopt(true, m_key);
        store.setBool(true, m_key); // what is there already
        QCOMPARE(here.size(), 0);
        QVERIFY(store.pendingChanges().isEmpty());
        store.setBool(false, m_key);

        QCOMPARE(here.size(), 1);
    }

    void theProgramsOwnStoreLiesInItsDataFolder()
    {
        NSUbiquitousKeyValueStore::defaultStore().setBool(true, m_key);

        const QString copy = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
            + QStringLiteral("/cloud-values.ini");
        QVERIFY(NSUbiquitousKeyValueStore(copy).boolForKey(m_key));
    }
};

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    qputenv("HOME", home.path().toLocal8Bit());
    qputenv("XDG_DATA_HOME", home.path().toLocal8Bit());
    QCoreApplication application(argc, argv);
    NSUbiquitousKeyValueStoreTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "NSUbiquitousKeyValueStoreTest.moc"
