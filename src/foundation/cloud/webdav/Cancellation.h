#pragma once

#include <QObject>

#include <atomic>

namespace mirror {

/// Ends what another thread is waiting for: the request under way and every later one of the stores
/// that share it fail as cancelled. For good: a store that is to go on is given a new one.
class Cancellation : public QObject {
    Q_OBJECT

public:
    /// From any thread, also more than once.
    void cancel()
    {
        m_isCancelled = true;
        Q_EMIT cancelled();
    }
    [[nodiscard]] bool isCancelled() const { return m_isCancelled; }

Q_SIGNALS:
    void cancelled();

private:
    std::atomic<bool> m_isCancelled = false;
};

} // namespace mirror
