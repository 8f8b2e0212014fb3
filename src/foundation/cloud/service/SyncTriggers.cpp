#include "SyncTriggers.h"

namespace mirror {

namespace {

using namespace std::chrono_literals;

constexpr auto EditPause = 2s;
constexpr auto ActivePoll = 60s;
constexpr auto IdlePoll = 5min;

} // namespace

SyncTriggers::SyncTriggers()
{
    m_edit.setSingleShot(true);
    m_poll.setSingleShot(true);
    m_poll.setTimerType(Qt::CoarseTimer);
    connect(&m_edit, &QTimer::timeout, this, &SyncTriggers::due);
    connect(&m_poll, &QTimer::timeout, this, &SyncTriggers::due);
}

void SyncTriggers::syncNow()
{
    m_patience = Patience::None;
    m_edit.stop();
    m_poll.start(0);
}

/// Further edits do not put it off.
void SyncTriggers::noteEdit()
{
    if (m_patience == Patience::None && !m_edit.isActive())
        m_edit.start(EditPause);
}

bool SyncTriggers::noteReturn()
{
    if (m_patience == Patience::UntilTimer || m_patience == Patience::UntilNews)
        return false;
    m_patience = Patience::None;
    m_poll.start(0);
    return true;
}

void SyncTriggers::setActive(bool isActive)
{
    m_isActive = isActive;
    // Only nearer: each look at the window would put it off otherwise.
    const bool mayHurry = m_isActive && m_patience == Patience::None;
    if (mayHurry && m_poll.isActive() && m_poll.remainingTimeAsDuration() > ActivePoll)
        m_poll.start(ActivePoll);
}

void SyncTriggers::noteReport(const SyncReport& report)
{
    m_patience = patienceAfter(report);
    m_comeBack = report.comeBack;
    m_edit.stop();
    startPoll();
}

void SyncTriggers::tryLater() { m_poll.start(ActivePoll); }

auto SyncTriggers::patienceAfter(const SyncReport& report) -> Patience
{
    if (!report.error)
        return Patience::None;
    switch (report.error->kind) {
    case FileError::Kind::Unauthorised:
    case FileError::Kind::Cancelled:
        return Patience::UntilNews;
    case FileError::Kind::Busy:
    case FileError::Kind::Locked:
    case FileError::Kind::TooLarge:
        return Patience::UntilTimer;
    default:
        return Patience::UntilReturn;
    }
}

/// An engine that has nothing to do says when to come back at the latest; one that failed, when at
/// the earliest.
void SyncTriggers::startPoll()
{
    m_poll.stop();
    if (!m_comeBack)
        return;
    const bool isIdle = m_patience == Patience::None;
    const std::chrono::milliseconds usual = m_isActive ? ActivePoll : IdlePoll;
    m_poll.start(isIdle ? std::min(*m_comeBack, usual) : *m_comeBack);
}

} // namespace mirror
