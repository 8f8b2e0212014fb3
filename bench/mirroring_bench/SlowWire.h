#pragma once

#include <QTcpServer>
#include <QThread>

/// A way to a server on which everything takes its time: what is sent arrives so much later, in
/// each direction. On a thread of its own.
class SlowWire {
public:
    /// The whole way there and back takes that long.
    SlowWire(quint16 port, int milliseconds);
    ~SlowWire();

    [[nodiscard]] quint16 port() const { return m_port; }

private:
    QThread m_thread;
    QTcpServer* m_server;
    quint16 m_port = 0;
};
