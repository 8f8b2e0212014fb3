#include "PasswordRequest.h"

#include "CoreDumps.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThread>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

namespace mirror {

namespace {

QThread* runningThread = nullptr;
QObject* requestOwner = nullptr; // on it; of the requests that are not answered yet

/// Before the application goes. What is not answered by then never is; a thread that does not end
/// is left behind, since the process does.
void endThread()
{
    constexpr unsigned long limit = 1000; // milliseconds
    requestOwner->deleteLater();
    if (runningThread->wait(limit))
        delete runningThread;
}

QThread* passwordThread()
{
    static std::once_flag once;
    std::call_once(once, [] {
        runningThread = new QThread;
        runningThread->setObjectName(QStringLiteral("passwords"));
        requestOwner = new QObject;
        requestOwner->moveToThread(runningThread);
        QObject::connect(
            requestOwner, &QObject::destroyed, runningThread, &QThread::quit, Qt::DirectConnection);
        runningThread->start();
        qAddPostRoutine(endThread);
    });
    return runningThread;
}

FileError failure(FileError::Kind kind, const QString& sentence)
{
    return { kind, 0, std::nullopt, sentence };
}

/// Where the one who waits and the one who answers meet.
class Meeting {
public:
    /// What has come in time.
    [[nodiscard]] Outcome<QString> wait(
        std::chrono::milliseconds limit, const Cancellation& cancellation)
    {
        std::unique_lock lock(m_mutex);
        m_happened.wait_for(
            lock, limit, [&] { return m_answer.has_value() || cancellation.isCancelled(); });
        if (m_answer)
            return *std::exchange(m_answer, std::nullopt);
        m_isLeft = true;
        if (cancellation.isCancelled())
            return failure(FileError::Kind::Cancelled, QStringLiteral("cancelled"));
        return failure(FileError::Kind::Unauthorised,
            QStringLiteral("Whoever keeps the password has not answered; perhaps it waits to be "
                           "unlocked."));
    }

    void bring(const Outcome<QString>& answer)
    {
        const std::scoped_lock lock(m_mutex);
        if (!m_isLeft)
            m_answer = answer;
        m_happened.notify_all();
    }

    void wake()
    {
        const std::scoped_lock lock(m_mutex);
        m_happened.notify_all();
    }

    [[nodiscard]] bool isLeft()
    {
        const std::scoped_lock lock(m_mutex);
        return m_isLeft;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_happened;
    std::optional<Outcome<QString>> m_answer;
    bool m_isLeft = false;
};

} // namespace

PasswordRequest::PasswordRequest(PasswordSource source)
    : m_source(std::move(source))
{
    keepMemoryOutOfCoreDumps();
    connect(this, &PasswordRequest::answered, this, &QObject::deleteLater);
    moveToThread(passwordThread());
}

void PasswordRequest::post() { QMetaObject::invokeMethod(this, "begin", Qt::QueuedConnection); }

void PasswordRequest::begin()
{
    setParent(requestOwner);
    // Who was asked may answer when the application is about to end.
    m_source(this, [self = QPointer(this)](const Outcome<QString>& outcome) {
        if (self)
            Q_EMIT self->answered(outcome);
    });
}

void PasswordRequest::ask(
    const PasswordSource& source, QObject* receiver, const PasswordReply& reply)
{
    auto* const request = new PasswordRequest(source);
    connect(request, &PasswordRequest::answered, receiver, reply, Qt::QueuedConnection);
    request->post();
}

Outcome<QString> PasswordRequest::wait(const PasswordSource& source,
    std::chrono::milliseconds limit, const Cancellation& cancellation, QObject* receiver,
    const std::function<void()>& late)
{
    const auto meeting = std::make_shared<Meeting>();
    auto* const request = new PasswordRequest(source);
    connect(
        request, &PasswordRequest::answered, request,
        [meeting](const Outcome<QString>& outcome) { meeting->bring(outcome); },
        Qt::DirectConnection);
    const auto tellIfLate = [meeting, late] {
        if (meeting->isLeft())
            late();
    };
    connect(request, &PasswordRequest::answered, receiver, tellIfLate, Qt::QueuedConnection);
    const QMetaObject::Connection cancelled
        = connect(&cancellation, &Cancellation::cancelled, [meeting] { meeting->wake(); });
    request->post();
    Outcome<QString> outcome = meeting->wait(limit, cancellation);
    disconnect(cancelled);
    return outcome;
}

} // namespace mirror
