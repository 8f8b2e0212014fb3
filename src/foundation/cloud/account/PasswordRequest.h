#pragma once

#include "Cancellation.h"
#include "FileError.h"

#include <QObject>

#include <chrono>
#include <functional>

namespace mirror {

/// Hands over a password, or why there is none. To be called at most once, and on the thread on
/// which it was asked for.
using PasswordReply = std::function<void(const Outcome<QString>&)>;

/// Begins to ask for a password, and returns at once. The context lives, and has events delivered
/// to it, until there is a reply.
using PasswordSource = std::function<void(QObject* context, const PasswordReply& reply)>;

/// One question for a password, which may wait for the user to unlock something.
///
/// All are asked on one thread, which lives as long as the application: QtKeychain keeps its queue
/// on the thread that used it first, and is stuck once that ends. Nor can a question be taken back:
/// who does not want to wait any longer leaves it there.
class PasswordRequest : public QObject {
    Q_OBJECT

public:
    /// Asks. The receiver hears of the answer on its own thread, unless it is gone by then.
    static void ask(const PasswordSource& source, QObject* receiver, const PasswordReply& reply);

    /// Asks and waits for the answer; no events are delivered meanwhile. One that comes too late is
    /// dropped, and the receiver told that it came.
    [[nodiscard]] static Outcome<QString> wait(const PasswordSource& source,
        std::chrono::milliseconds limit, const Cancellation& cancellation, QObject* receiver,
        const std::function<void()>& late);

Q_SIGNALS:
    void answered(const mirror::Outcome<QString>& outcome);

private:
    explicit PasswordRequest(PasswordSource source);
    void post();
    Q_INVOKABLE void begin();

    const PasswordSource m_source;
};

} // namespace mirror
