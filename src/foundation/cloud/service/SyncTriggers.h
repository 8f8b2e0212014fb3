#pragma once

#include "MirrorEngine.h"

#include <QTimer>

namespace mirror {

/// Says when to sync: after an edit, when the window is used again, and by the clock; and when not,
/// because the server wishes to be left alone.
class SyncTriggers : public QObject {
    Q_OBJECT

public:
    SyncTriggers();

    /// At once, whatever was before: the account or its credentials changed, or the user decided
    /// something.
    void syncNow();
    /// There is something to publish: soon, so that a few edits go together.
    void noteEdit();
    /// The network is back, or the window is used again; true where that is a reason to sync.
    bool noteReturn();
    void setActive(bool isActive);
    /// After a sync: when the next one is due.
    void noteReport(const SyncReport& report);
    /// Another process has the store in its care.
    void tryLater();

    /// How long until a sync is due if nothing else happens; negative where none is.
    [[nodiscard]] std::chrono::milliseconds nextPoll() const
    {
        return m_poll.remainingTimeAsDuration();
    }

Q_SIGNALS:
    void due();

private:
    enum class Patience {
        None, ///< ask whenever there is a reason
        UntilReturn, ///< an edit is no reason: a server is down, or out of reach
        UntilTimer, ///< the server said when
        UntilNews, ///< nothing helps but other credentials
    };

    static Patience patienceAfter(const SyncReport& report);
    void startPoll();

    QTimer m_edit;
    QTimer m_poll;
    Patience m_patience = Patience::None;
    std::optional<std::chrono::milliseconds> m_comeBack;
    bool m_isActive = false;
};

} // namespace mirror
