#pragma once

#include "CloudSetup.h"
#include "NSUbiquitousKeyValueStore.h"

#include <QThread>

#include <memory>

namespace mirror {
class Cancellation;
class CloudPort;
class CloudWorker;
} // namespace mirror

/// Carries out what the cloud's other classes promise: says whether there is an account, mirrors
/// the store that a NSPersistentCloudKitContainer opened, deletes its zone, and carries the values
/// of the key-value store. All on a thread of its own, which starts with start().
///
/// One for a process, on the main thread. It must be made before the first container, so that
/// nothing is asked in vain, and go before the application object.
class CloudService : public QObject {
    Q_OBJECT

public:
    /// The values must outlive this.
    explicit CloudService(NSUbiquitousKeyValueStore& values);
    /// Breaks off whatever is under way; the next start goes on with it.
    ~CloudService() override;

    /// Once, when the window can be seen: nothing of this is needed before.
    void start(const CloudSetup& setup);
    /// Whether the user works with the program right now.
    void setActive(bool isActive);

private:
    void followChoice();
    void sendChanges();
    void followNetwork();

    NSUbiquitousKeyValueStore& m_values;
    std::shared_ptr<mirror::Cancellation> m_cancellation;
    QThread m_thread;
    std::unique_ptr<mirror::CloudWorker> m_worker;
    std::shared_ptr<mirror::CloudPort> m_port;
    QString m_choiceKey; // from start() on
    bool m_isChosen = false;
    bool m_isMirrored = false;
};
