#include "CloudService.h"

#include "CloudPort.h"
#include "CloudWorker.h"
#include "NSPersistentCloudKitContainer.h"

#include <QNetworkInformation>

using mirror::CloudPort;
using mirror::CloudWorker;

namespace {

/// Asks the worker and waits; the other answer where it goes before it knows. Whoever began it on
/// the main thread is never answered before that went on.
template <class Answer, class Ask>
Answer ask(const std::shared_ptr<CloudPort>& port, Ask question, Answer otherwise)
{
    auto promise = std::make_shared<std::promise<Answer>>();
    std::future<Answer> answer = promise->get_future();
    Q_EMIT port->forMainThread([port, promise = std::move(promise), question] {
        Q_EMIT port->forWorker(
            [promise, question](CloudWorker& to) { question(to, std::move(*promise)); });
    });
    try {
        return answer.get();
    } catch (const std::future_error&) {
        return otherwise;
    }
}

} // namespace

CloudService::CloudService(NSUbiquitousKeyValueStore& values)
    : m_values(values)
    , m_cancellation(std::make_shared<mirror::Cancellation>())
    , m_worker(std::make_unique<CloudWorker>(m_cancellation))
    , m_port(std::make_shared<CloudPort>())
{
    qRegisterMetaType<CloudPort::Call>();
    qRegisterMetaType<CloudPort::WorkerCall>();
    connect(
        m_port.get(), &CloudPort::forMainThread, this, [](const CloudPort::Call& call) { call(); },
        Qt::QueuedConnection);
    connect(
        m_port.get(), &CloudPort::forWorker, m_worker.get(),
        [to = m_worker.get()](const CloudPort::WorkerCall& call) { call(*to); },
        Qt::QueuedConnection);
    m_thread.setObjectName(QStringLiteral("cloud"));
    CKContainer::setAccountSource([port = m_port] {
        return ask(
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
            return ask(
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
    // What knows of the network brings a megabyte of libraries, which are of use to an account
    // only.
    connect(m_worker.get(), &CloudWorker::accountFound, this, &CloudService::followNetwork,
        Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
    m_worker->moveToThread(&m_thread);
}

CloudService::~CloudService()
{
    CKContainer::setAccountSource({});
    CKDatabase::setZoneDeletion({});
    NSPersistentCloudKitContainer::setMirroring({});
    m_cancellation->cancel();
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
    Q_EMIT m_port->forWorker([setup, isMirrored = m_isMirrored](
                                 CloudWorker& worker) { worker.start(setup, isMirrored); });
    sendChanges();
}

void CloudService::setActive(bool isActive)
{
    if (m_thread.isRunning())
        Q_EMIT m_port->forWorker([isActive](CloudWorker& worker) { worker.setActive(isActive); });
}

/// Only a choice that changes is the user's word: containers are opened for other reasons, too.
void CloudService::followChoice()
{
    if (!m_thread.isRunning())
        return;
    const bool isChosen = m_values.boolForKey(m_choiceKey);
    if (std::exchange(m_isChosen, isChosen) != isChosen) {
        Q_EMIT m_port->forWorker(
            [isChosen](CloudWorker& worker) { isChosen ? worker.switchOn() : worker.switchOff(); });
    }
    sendChanges();
}

void CloudService::sendChanges()
{
    const QList<UbiquitousChange> changes = m_values.pendingChanges();
    if (!changes.isEmpty())
        Q_EMIT m_port->forWorker([changes](CloudWorker& worker) { worker.setChanges(changes); });
}

void CloudService::followNetwork()
{
    if (!QNetworkInformation::loadDefaultBackend())
        return;
    connect(QNetworkInformation::instance(), &QNetworkInformation::reachabilityChanged, this,
        [this](QNetworkInformation::Reachability reachability) {
            if (reachability == QNetworkInformation::Reachability::Online)
                Q_EMIT m_port->forWorker([](CloudWorker& worker) { worker.noteNetwork(); });
        });
}
