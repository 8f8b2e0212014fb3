#include "CKContainer.h"

#include <QCoreApplication>
#include <QSemaphore>
#include <QTest>
#include <QThread>

#include <atomic>
#include <memory>

namespace {

/// What the completion of one question was handed.
struct Asked {
    CKContainer::AccountAnswer answer;
    QThread* thread = nullptr;
    QSemaphore isAnswered;
};

std::shared_ptr<Asked> ask()
{
    auto asked = std::make_shared<Asked>();
    CKContainer::defaultContainer().accountStatus(
        [asked](const CKContainer::AccountAnswer& answer) {
            asked->answer = answer;
            asked->thread = QThread::currentThread();
            asked->isAnswered.release();
        });
    return asked;
}

constexpr int longEnough = 30000; // milliseconds; only a failure takes that long

} // namespace

class CKContainerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { CKContainer::setAccountSource({}); }

    void withNobodyToAskThereIsNoAccount()
    {
        const auto asked = ask();

        QVERIFY(asked->isAnswered.tryAcquire(1, longEnough));
        QCOMPARE(asked->answer.status, CKAccountStatus::NoAccount);
        QVERIFY(!asked->answer.error);
    }

    void theSourcesAnswerIsHandedOn()
    {
        CKContainer::setAccountSource([] {
            return CKContainer::AccountAnswer { CKAccountStatus::CouldNotDetermine,
                CKError { QStringLiteral("The cloud is not there.") } };
        });

        const auto asked = ask();

        QVERIFY(asked->isAnswered.tryAcquire(1, longEnough));
        QCOMPARE(asked->answer.status, CKAccountStatus::CouldNotDetermine);
        QCOMPARE(
            asked->answer.error->localizedDescription, QStringLiteral("The cloud is not there."));
    }

    void askingDoesNotWaitForTheAnswer()
    {
        const auto mayAnswer = std::make_shared<QSemaphore>();
        CKContainer::setAccountSource([mayAnswer] {
            mayAnswer->acquire();
            return CKContainer::AccountAnswer { CKAccountStatus::Available, {} };
        });

        const auto asked = ask();

        QCOMPARE(asked->isAnswered.available(), 0);
        mayAnswer->release();
        QVERIFY(asked->isAnswered.tryAcquire(1, longEnough));
        QCOMPARE(asked->answer.status, CKAccountStatus::Available);
    }

    void theCompletionRunsOnAnotherThread()
    {
        const auto asked = ask();

        QVERIFY(asked->isAnswered.tryAcquire(1, longEnough));
        QVERIFY(asked->thread != nullptr);
        QVERIFY(asked->thread != QThread::currentThread());
    }

    void everyQuestionIsAskedAnew()
    {
        const auto count = std::make_shared<std::atomic<int>>(0);
        CKContainer::setAccountSource([count] {
            ++*count;
            return CKContainer::AccountAnswer();
        });

        for (const auto& asked : { ask(), ask(), ask() })
            QVERIFY(asked->isAnswered.tryAcquire(1, longEnough));

        QCOMPARE(count->load(), 3);
    }
};

QTEST_GUILESS_MAIN(CKContainerTest)
#include "CKContainerTest.moc"
