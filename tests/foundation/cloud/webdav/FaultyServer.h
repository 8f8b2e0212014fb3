#pragma once

#include <QByteArrayList>
#include <QSemaphore>
#include <QTcpServer>
#include <QThread>
#include <QUrl>

#include <functional>
#include <mutex>

class QTcpSocket;

/// An HTTP server on a free port of this machine that answers, byte by byte, whatever a test wants.
class FaultyServer {
public:
    struct Request {
        QByteArray verb;
        QByteArray target;
        QByteArrayList headers; ///< "Name: value" each
        QByteArray body;

        /// The value, empty where there is no such header.
        [[nodiscard]] QByteArray header(const QByteArray& name) const;
    };

    struct Answer {
        enum class Then { KeepOpen, Close, SendForEver };

        QByteArrayList pieces; ///< sent one after the other, pieceInterval apart
        Then then = Then::KeepOpen;
    };
    static constexpr int pieceInterval = 150; // milliseconds

    /// Answers each request; called on the server's thread.
    using Rule = std::function<Answer(const Request&)>;

    explicit FaultyServer(Rule rule);
    ~FaultyServer();
    FaultyServer(const FaultyServer&) = delete;
    FaultyServer& operator=(const FaultyServer&) = delete;

    [[nodiscard]] QUrl url(const QString& path = QStringLiteral("/dav/")) const;
    [[nodiscard]] QList<Request> requests() const;
    [[nodiscard]] int connections() const;

    /// A whole answer with its length.
    [[nodiscard]] static Answer answer(
        const QByteArray& status, const QByteArray& body = {}, const QByteArrayList& headers = {});

private:
    void listen();
    void accept();
    void receive(QTcpSocket& socket);
    void send(QTcpSocket& socket, const Answer& answer);

    Rule m_rule;
    QThread m_thread;
    QTcpServer* m_server = new QTcpServer; // lives on the thread, and ends with it
    QSemaphore m_isListening;
    quint16 m_port = 0;
    mutable std::mutex m_mutex;
    QList<Request> m_requests;
    int m_connections = 0;
};
