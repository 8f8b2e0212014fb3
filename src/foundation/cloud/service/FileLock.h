#pragma once

#include <QString>

namespace mirror {

/// A file that one process holds at a time. The system lets go of it when the process ends, however
/// it ends; the file itself stays.
class FileLock {
public:
    /// The file need not exist yet.
    explicit FileLock(QString file)
        : m_file(std::move(file))
    {
    }
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// Whether it is held, from now on or already. Never waits.
    [[nodiscard]] bool tryLock();

    /// A sentence where the last tryLock() failed for another reason than that another process
    /// holds it; otherwise empty.
    [[nodiscard]] const QString& problem() const { return m_problem; }

private:
    void noteProblem(int error);

    QString m_file;
    int m_descriptor = -1;
    QString m_problem;
};

} // namespace mirror
