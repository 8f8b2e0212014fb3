#pragma once

#include <QFileSystemWatcher>
#include <QTimer>

/// Tells that somebody, of this process or another, writes into a store file that is open.
///
/// The file system tells of the write into the log, which comes a while before what was written can
/// be read: as long as the disk takes to make it last. So each write is told several times, at
/// growing intervals, and whoever listens should find out at little cost whether there is anything.
class StoreFileWatch : public QObject {
    Q_OBJECT

public:
    StoreFileWatch();

    /// The store was opened and stays so, on any thread.
    void watch(const QString& storeFile);

Q_SIGNALS:
    void maybeWritten();

private:
    void tell();

    QFileSystemWatcher m_watcher;
    QTimer m_next;
    int m_told = 0; // times since the last write
};
