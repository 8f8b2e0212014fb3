#include "FileLock.h"

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace mirror {

FileLock::~FileLock()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool FileLock::tryLock()
{
    if (m_descriptor >= 0)
        return true;
    m_problem.clear();
    const int descriptor = ::open(
        QFile::encodeName(m_file).constData(), O_CREAT | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor < 0) {
        noteProblem(errno);
        return false;
    }
    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK)
            noteProblem(errno);
        ::close(descriptor);
        return false;
    }
    m_descriptor = descriptor;
    return true;
}

void FileLock::noteProblem(int error)
{
    m_problem = QStringLiteral("%1 could not be locked: %2.").arg(m_file, qt_error_string(error));
}

} // namespace mirror
