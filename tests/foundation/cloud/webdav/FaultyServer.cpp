#include "FaultyServer.h"

#include <QTcpSocket>
#include <QTimer>

namespace {

constexpr qint64 untilSent = 1024LL * 1024; // bytes that may wait in a socket

/// Cuts the first whole request off the bytes.
std::optional<FaultyServer::Request> takeRequest(QByteArray& bytes)
{
    const qsizetype headEnd = bytes.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return std::nullopt;
    FaultyServer::Request request;
    request.headers = bytes.first(headEnd).replace("\r\n", "\n").split('\n');
    const QByteArrayList first = request.headers.takeFirst().split(' ');
    request.verb = first.value(0);
    request.target = first.value(1);
    const qsizetype bodyStart = headEnd + 4;
    const qsizetype bodySize = request.header("Content-Length").toLongLong();
    if (bytes.size() < bodyStart + bodySize)
        return std::nullopt;
    request.body = bytes.sliced(bodyStart, bodySize);
    bytes.remove(0, bodyStart + bodySize);
    return request;
}

/// Paced, as a network is: Qt reads for as long as there is something to read, and would be kept
/// from anything else by a sender that is as fast as itself.
void sendForEver(QTcpSocket& socket)
{
    auto* timer = new QTimer(&socket);
    QObject::connect(timer, &QTimer::timeout, &socket, [&socket] {
        if (socket.isOpen() && socket.bytesToWrite() < untilSent)
            socket.write(QByteArray(64LL * 1024, 'x'));
    });
    timer->start(1);
}

} // namespace

QByteArray FaultyServer::Request::header(const QByteArray& name) const
{
    for (const QByteArray& header : headers) {
        const qsizetype colon = header.indexOf(':');
        if (header.first(colon).compare(name, Qt::CaseInsensitive) == 0)
            return header.sliced(colon + 1).trimmed();
    }
    return {};
}

FaultyServer::FaultyServer(Rule rule)
    : m_rule(std::move(rule))
{
    m_server->moveToThread(&m_thread);
    QObject::connect(&m_thread, &QThread::started, m_server, [this] { listen(); });
    QObject::connect(&m_thread, &QThread::finished, m_server, &QObject::deleteLater);
    m_thread.start();
    m_isListening.acquire();
}

FaultyServer::~FaultyServer()
{
    m_thread.quit();
    m_thread.wait();
}

void FaultyServer::listen()
{
    QObject::connect(m_server, &QTcpServer::newConnection, m_server, [this] { accept(); });
    if (!m_server->listen(QHostAddress::LocalHost))
        qFatal("The faulty server has no port.");
    m_port = m_server->serverPort();
    m_isListening.release();
}

void FaultyServer::accept()
{
    QTcpSocket* socket = m_server->nextPendingConnection();
    QObject::connect(socket, &QTcpSocket::readyRead, socket, [=, this] { receive(*socket); });
    QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    const std::scoped_lock lock(m_mutex);
    ++m_connections;
}

void FaultyServer::receive(QTcpSocket& socket)
{
    QByteArray bytes = socket.property("received").toByteArray() + socket.readAll();
    while (const std::optional<Request> request = takeRequest(bytes)) {
        {
            const std::scoped_lock lock(m_mutex);
            m_requests.append(*request);
        }
        send(socket, m_rule(*request));
    }
    socket.setProperty("received", bytes);
}

void FaultyServer::send(QTcpSocket& socket, const Answer& answer)
{
    if (!answer.pieces.isEmpty()) {
        socket.write(answer.pieces.first());
        socket.flush();
    }
    if (answer.pieces.size() > 1) {
        const Answer rest { answer.pieces.sliced(1), answer.then };
        auto* timer = new QTimer(&socket);
        QObject::connect(timer, &QTimer::timeout, &socket, [=, this, &socket] {
            timer->deleteLater();
            send(socket, rest);
        });
        timer->setSingleShot(true);
        timer->start(pieceInterval);
    } else if (answer.then == Answer::Then::Close) {
        socket.disconnectFromHost();
    } else if (answer.then == Answer::Then::SendForEver) {
        sendForEver(socket);
    }
}

QUrl FaultyServer::url(const QString& path) const
{
    QUrl url;
    url.setScheme(QStringLiteral("http"));
    url.setHost(QStringLiteral("127.0.0.1"));
    url.setPort(m_port);
    url.setPath(path);
    return url;
}

QList<FaultyServer::Request> FaultyServer::requests() const
{
    const std::scoped_lock lock(m_mutex);
    return m_requests;
}

int FaultyServer::connections() const
{
    const std::scoped_lock lock(m_mutex);
    return m_connections;
}

FaultyServer::Answer FaultyServer::answer(
    const QByteArray& status, const QByteArray& body, const QByteArrayList& headers)
{
    QByteArray bytes = "HTTP/1.1 " + status + "\r\n";
    for (const QByteArray& header : headers)
        bytes += header + "\r\n";
    bytes += "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
    return { { bytes } };
}
