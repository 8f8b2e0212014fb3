#include "StoreFileWatch.h"

namespace {

constexpr int FirstPause = 10; // milliseconds
constexpr int Times = 10; // each pause twice the one before: ten seconds in all

} // namespace

StoreFileWatch::StoreFileWatch()
{
    m_next.setSingleShot(true);
    connect(&m_next, &QTimer::timeout, this, &StoreFileWatch::tell);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, [this] {
        m_told = 0;
        // One that writes again and again must not put it off.
        if (!m_next.isActive() || m_next.remainingTime() > FirstPause)
            m_next.start(FirstPause);
    });
}

void StoreFileWatch::watch(const QString& storeFile)
{
    m_watcher.addPath(storeFile + QLatin1String("-wal"));
}

void StoreFileWatch::tell()
{
    if (++m_told < Times)
        m_next.start(FirstPause << m_told);
    Q_EMIT maybeWritten();
}
