#include "NSUbiquitousKeyValueStore.h"

#include <QCoreApplication>
#include <QFile>
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
