#include "FileLock.h"

#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using mirror::FileLock;

/// One process at a time.
class FileLockTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    const QString m_file = m_folder.filePath(QStringLiteral("lock"));

private Q_SLOTS:
    void oneHoldsIt()
    {
        FileLock first(m_file);
        FileLock second(m_file);

        QVERIFY(first.tryLock());
        QVERIFY(first.tryLock());
        QVERIFY(!second.tryLock());
    }

    void theNextOneHoldsItWhenTheFirstGoes()
    {
        FileLock second(m_file);
        {
            FileLock first(m_file);
            QVERIFY(first.tryLock());
        }

        QVERIFY(second.tryLock());
    }

    void aKilledProcessHoldsNothing()
    {
        int ready[2] = {};
        QCOMPARE(::pipe(ready), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            FileLock held(m_file);
            const char answer = held.tryLock() ? 'y' : 'n';
            (void)!::write(ready[1], &answer, 1);
            for (;;)
                ::pause();
        }
        const auto ended = qScopeGuard([child] {
            ::kill(child, SIGKILL);
            ::waitpid(child, nullptr, 0);
        });
        char answer = 0;
        QCOMPARE(::read(ready[0], &answer, 1), ssize_t(1));
        QCOMPARE(answer, 'y');
        FileLock ours(m_file);
        QVERIFY(!ours.tryLock());

        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);

        QVERIFY(ours.tryLock());
        QVERIFY(QFile::exists(m_file)); // what is left of it hinders nobody
    }

    void whereNoFileCanBeMadeItIsNotHeld()
    {
        const QString file = m_folder.filePath(QStringLiteral("missing/lock"));
        FileLock lock(file);

        QVERIFY(!lock.tryLock());
        QVERIFY(lock.problem().contains(file));
    }

    void thatAnotherOneHoldsItIsNoProblem()
    {
        FileLock first(m_file);
        FileLock second(m_file);
        QVERIFY(first.tryLock());

        QVERIFY(!second.tryLock());

        QVERIFY(second.problem().isEmpty());
    }
};

QTEST_GUILESS_MAIN(FileLockTest)
#include "FileLockTest.moc"
