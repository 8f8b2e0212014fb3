#include "PasswordRequest.h"

#include <QCoreApplication>
#include <QFile>
#include <QSemaphore>
#include <QTest>
#include <QThread>
#include <QTimer>

using namespace mirror;
using namespace std::chrono_literals;

namespace {

const QString password = QStringLiteral("geheim");

const PasswordSource answering
    = [](QObject* /*context*/, const PasswordReply& reply) { reply(password); };

} // namespace

class PasswordRequestTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<Cancellation> m_cancellation;
    int m_late = 0;

    [[nodiscard]] Outcome<QString> wait(
        const PasswordSource& source, std::chrono::milliseconds limit = 20s)
    {
        return PasswordRequest::wait(source, limit, *m_cancellation, this, [this] { ++m_late; });
    }

private Q_SLOTS:
    void init()
    {
        m_cancellation = std::make_unique<Cancellation>();
        m_late = 0;
    }

    void aPasswordIsAskedForOnAThreadWithEventsAndHandedOver()
    {
        QThread* asked = nullptr;
        const auto found = wait([&](QObject* context, const PasswordReply& reply) {
            asked = QThread::currentThread();
            auto* const timer = new QTimer(context);
            timer->setSingleShot(true);
            connect(timer, &QTimer::timeout, context, [reply] { reply(password); });
            timer->start();
        });

        QVERIFY(found);
        QCOMPARE(*found, password);
        QVERIFY(asked != QThread::currentThread());
    }

    void memoryIsLeftOutOfCoreDumpsBeforeThePasswordIsThere()
    {
        uint filter = ~0U;
        const auto found = wait([&](QObject* /*context*/, const PasswordReply& reply) {
            QFile file(QStringLiteral("/proc/self/coredump_filter"));
            if (file.open(QIODevice::ReadOnly))
                filter = file.readAll().trimmed().toUInt(nullptr, 16);
            reply(password);
        });

        QVERIFY(found);
        QCOMPARE(filter & 0x63U, 0U);
    }

    void anAnswerThatComesTooLateIsDroppedAndToldOf()
    {
        QSemaphore left;
        const auto found = wait(
            [&left](QObject* /*context*/, const PasswordReply& reply) {
                left.acquire();
                reply(password);
            },
            1ms);
        QVERIFY(!found);
        QCOMPARE(found.error().kind, FileError::Kind::Unauthorised);
        QCOMPARE(m_late, 0);

        left.release();

        QTRY_COMPARE(m_late, 1);
    }

    void whoIsGoneHearsNothing()
    {
        auto receiver = std::make_unique<QObject>();
        int heard = 0;
        PasswordRequest::ask(
            answering, receiver.get(), [&heard](const Outcome<QString>&) { ++heard; });
        receiver.reset();

        // One question is answered after the other.
        bool isAnswered = false;
        PasswordRequest::ask(answering, this, [&](const Outcome<QString>&) { isAnswered = true; });
        QTRY_VERIFY(isAnswered);
        QCOMPARE(heard, 0);
    }

    void waitingEndsWithTheCancellation()
    {
        const auto found = wait(
            [this](QObject* /*context*/, const PasswordReply&) { m_cancellation->cancel(); });

        QCOMPARE(found.error().kind, FileError::Kind::Cancelled);
    }

    void afterTheCancellationNobodyWaits()
    {
        m_cancellation->cancel();

        const auto found = wait([](QObject* /*context*/, const PasswordReply&) {});

        QCOMPARE(found.error().kind, FileError::Kind::Cancelled);
    }
};

QTEST_GUILESS_MAIN(PasswordRequestTest)
#include "PasswordRequestTest.moc"
