#pragma once

#include <QObject>

/// Turns the signals by which a session or a terminal ends a program (SIGTERM, SIGINT, SIGHUP) into
/// an orderly quit, so that what was typed last is kept. The same signal a
/// second time ends the process at once.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    /// Handles the signals from now on. One instance per process, as long as its event loop.
    TerminationSignals();
    ~TerminationSignals() override;
};
