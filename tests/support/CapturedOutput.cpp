#include "CapturedOutput.h"

#include <cstdio>
#include <unistd.h>

CapturedOutput::CapturedOutput()
{
    (void)std::fflush(stdout);
    m_terminal = ::dup(STDOUT_FILENO);
    if (m_file.open())
        ::dup2(m_file.handle(), STDOUT_FILENO);
}

CapturedOutput::~CapturedOutput()
{
    (void)std::fflush(stdout);
    ::dup2(m_terminal, STDOUT_FILENO);
    ::close(m_terminal);
}

QByteArrayList CapturedOutput::lines() const
{
    QFile file(m_file.fileName()); // a handle of its own: the other one's position is the output's
    if (!file.open(QIODevice::ReadOnly))
        return { "the captured output cannot be read" };
    QByteArrayList lines = file.readAll().split('\n');
    lines.removeLast(); // what follows the last line end
    return lines;
}

QByteArrayList linesOf(const std::function<void()>& call)
{
    const CapturedOutput output;
    call();
    return output.lines();
}
