#include "CloudService.h"

#include "CloudWorker.h"
#include "NSPersistentCloudKitContainer.h"

#include <QNetworkInformation>

#include <mutex>

using mirror::CloudWorker;

/// The way to the worker for other threads, which may still come when it is gone.
struct CloudService::Port {
    template <class Call> void post(Call call)
    {
        const std::scoped_lock lock(mutex);
        if (worker != nullptr)
            QMetaObject::invokeMethod(
                worker, [to = worker, call = std::move(call)]() mutable { call(*to); });
    }

    /// Runs the call when the main thread is back in its event loop.
    template <class Call> void postToMain(Call call)
    {
        const std::scoped_lock lock(mutex);
        if (service != nullptr)
            QMetaObject::invokeMethod(service, std::move(call), Qt::QueuedConnection);
    }

    /// Asks the worker and waits; the other answer where it goes before it knows. Whoever began it
    /// on the main thread is never answered before that went on.
    template <class Answer, class Ask>
    static Answer ask(const std::shared_ptr<Port>& port, Ask question, Answer otherwise)
    {
        auto promise = std::make_shared<std::promise<Answer>>();
        std::future<Answer> answer = promise->get_future();
        port->postToMain([port, promise = std::move(promise), question = std::move(question)] {
            port->post([promise, question](CloudWorker& to) { question(to, std::move(*promise)); });
        });
        try {
            return answer.get();
        } catch (const std::future_error&) {
            return otherwise;
        }
    }

    std::mutex mutex;
    CloudService* service = nullptr;
    CloudWorker* worker = nullptr;
};

CloudService::CloudService(NSUbiquitousKeyValueStore& values)
    : m_values(values)
    , m_cancellation(std::make_shared<mirror::Cancellation>())
    , m_worker(std::make_unique<CloudWorker>(m_cancellation))
    , m_port(std::make_shared<Port>())
{
    m_port->service = this;
    m_port->worker = m_worker.get();
    m_thread.setObjectName(QStringLiteral("cloud"));
    CKContainer::setAccountSource([port = m_port] {
        return Port::ask(
            port,
            [](CloudWorker& to, CloudWorker::StatusPromise answer) {
                to.askStatus(std::move(answer));
            },
            CKContainer::AccountAnswer());
    });
    CKDatabase::setZoneDeletion(
        [port = m_port](const QString& container, const CKRecordZoneID& zone) {
            const std::optional<CKError> unanswered = CKError { QStringLiteral(
                "The program ended before the saved bills were deleted from the cloud.") };
            return Port::ask(
                port,
                [container, zone](CloudWorker& to, CloudWorker::DeletionPromise answer) {
                    to.deleteZone(container, zone, std::move(answer));
                },
                unanswered);
        });
    NSPersistentCloudKitContainer::setMirroring(
        [this](const QString& /*file*/) { m_isMirrored = true; });
    connect(&m_values, &NSUbiquitousKeyValueStore::changedHere, this, &CloudService::followChoice);
    connect(&m_values, &NSUbiquitousKeyValueStore::didChangeExternally, this,
        [this] { m_isChosen = m_values.boolForKey(m_choiceKey); });
    connect(m_worker.get(), &CloudWorker::changesKept, this,
        [this](const QList<UbiquitousChange>& changes) {
            for (const UbiquitousChange& change : changes)
                m_values.didCarry(change);
        });
    connect(m_worker.get(), &CloudWorker::valuesKnown, this,
        [this](const QList<mirror::SharedValue>& known) {
            for (const mirror::SharedValue& shared : known)
                m_values.adopt(shared.value, shared.key);
        });
    m_worker->moveToThread(&m_thread);
}

CloudService::~CloudService()
{
    CKContainer::setAccountSource({});
    CKDatabase::setZoneDeletion({});
    NSPersistentCloudKitContainer::setMirroring({});
    m_cancellation->cancel();
    {
        const std::scoped_lock lock(m_port->mutex);
        m_port->service = nullptr;
        m_port->worker = nullptr;
    }
    if (m_thread.isRunning()) {
        // What lives on that thread goes there, too.
        connect(&m_thread, &QThread::finished, m_worker.release(), &QObject::deleteLater);
        m_thread.quit();
        m_thread.wait();
    }
}

void CloudService::start(const CloudSetup& setup)
{
    m_choiceKey = setup.choiceKey;
    m_isChosen = m_values.boolForKey(m_choiceKey);
    m_thread.start(QThread::LowPriority);
    m_port->post([setup, isMirrored = m_isMirrored](
                     CloudWorker& worker) { worker.start(setup, isMirrored); });
    sendChanges();
    followNetwork();
}

void CloudService::setActive(bool isActive)
{
    if (m_thread.isRunning())
        m_port->post([isActive](CloudWorker& worker) { worker.setActive(isActive); });
}

/// Only a choice that changes is the user's word: containers are opened for other reasons, too.
void CloudService::followChoice()
{
    if (!m_thread.isRunning())
        return;
    const bool isChosen = m_values.boolForKey(m_choiceKey);
    if (!std::exchange(m_isChosen, isChosen) && isChosen)
        m_port->post([](CloudWorker& worker) { worker.switchOn(); });
    sendChanges();
}

void CloudService::sendChanges()
{
    const QList<UbiquitousChange> changes = m_values.pendingChanges();
    if (!changes.isEmpty())
        m_port->post([changes](CloudWorker& worker) { worker.setChanges(changes); });
}

void CloudService::followNetwork()
{
    if (!QNetworkInformation::loadDefaultBackend())
        return;
    connect(QNetworkInformation::instance(), &QNetworkInformation::reachabilityChanged, this,
        [this](QNetworkInformation::Reachability reachability) {
            if (reachability == QNetworkInformation::Reachability::Online)
                m_port->post([](CloudWorker& worker) { worker.noteNetwork(); });
        });
}
