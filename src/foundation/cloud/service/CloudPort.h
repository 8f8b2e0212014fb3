#pragma once

#include <QObject>

#include <functional>

namespace mirror {

class CloudWorker;

/// The way from other threads to the main one and to the worker. What is emitted when those are
/// gone is dropped.
class CloudPort : public QObject {
    Q_OBJECT

public:
    using Call = std::function<void()>;
    using WorkerCall = std::function<void(CloudWorker&)>;

Q_SIGNALS:
    void forMainThread(const mirror::CloudPort::Call& call);
    void forWorker(const mirror::CloudPort::WorkerCall& call);
};

} // namespace mirror
