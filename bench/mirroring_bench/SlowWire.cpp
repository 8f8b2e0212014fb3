#include "SlowWire.h"

#include <QTcpSocket>
#include <QTimer>

namespace {

void carry(QTcpSocket* from, QTcpSocket* to, int milliseconds)
{
    QObject::connect(from, &QTcpSocket::readyRead, to, [from, to, milliseconds] {
        QTimer::singleShot(milliseconds, Qt::PreciseTimer, to,
            [to, bytes = from->readAll()] { to->write(bytes); });
    });
    QObject::connect(from, &QTcpSocket::disconnected, to, [to, milliseconds] {
        QTimer::singleShot(milliseconds, Qt::PreciseTimer, to, [to] { to->disconnectFromHost(); });
    });
}

} // namespace

SlowWire::SlowWire(quint16 port, int milliseconds)
    : m_server(new QTcpServer)
{
    QObject::connect(m_server, &QTcpServer::newConnection, m_server, [this, port, milliseconds] {
        while (QTcpSocket* const client = m_server->nextPendingConnection()) {
            auto* const server = new QTcpSocket(client);
            server->connectToHost(QStringLiteral("127.0.0.1"), port);
            client->setSocketOption(QAbstractSocket::LowDelayOption, 1);
            server->setSocketOption(QAbstractSocket::LowDelayOption, 1);
            carry(client, server, milliseconds / 2);
            carry(server, client, milliseconds - milliseconds / 2);
            QObject::connect(client, &QTcpSocket::disconnected, client, &QObject::deleteLater);
        }
    });
    if (!m_server->listen(QHostAddress::LocalHost))
        qFatal("No port is free.");
    m_port = m_server->serverPort();
    m_server->moveToThread(&m_thread);
    m_thread.start();
}

SlowWire::~SlowWire()
{
    m_server->deleteLater();
    m_thread.quit();
    m_thread.wait();
}
