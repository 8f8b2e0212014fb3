#pragma once

#include <QByteArrayList>
#include <QTemporaryFile>

#include <functional>

/// Takes what the process writes to standard output, for as long as it lives. The log of the tests
/// goes there too, so a comparison that fails meanwhile is not seen by the eye: take the lines
/// first and compare them after the capture.
class CapturedOutput {
public:
    CapturedOutput();
    ~CapturedOutput();
    CapturedOutput(const CapturedOutput&) = delete;
    CapturedOutput& operator=(const CapturedOutput&) = delete;

    /// What was written so far, without the line ends.
    [[nodiscard]] QByteArrayList lines() const;

private:
    QTemporaryFile m_file;
    int m_terminal;
};

/// What the call writes.
[[nodiscard]] QByteArrayList linesOf(const std::function<void()>& call);
