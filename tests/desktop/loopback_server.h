#pragma once

// A small server of the web on this computer, for one test: it answers as rightly or as wrongly as it is told.

#include <QHash>
#include <QList>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace glintara::testing {

/// What the server writes. Nothing is added to it.
struct RawAnswer {
    QByteArray bytes;
    bool closes = true;    ///< the connection is closed behind it; otherwise it stays open, silent
    bool endless = false;  ///< `bytes` ends with what is repeated for ever, its last 64 KiB
    int pause = 0;         ///< when not 0, the last eight bytes come one by one, each so many milliseconds later
};

/// A good answer with its head.
inline RawAnswer TextAnswer(const QByteArray& text, const QByteArray& status = "200 OK",
                            const QByteArray& headers = {}) {
    return {"HTTP/1.1 " + status + "\r\nContent-Type: text/plain\r\nContent-Length: " +
            QByteArray::number(text.size()) + "\r\nConnection: close\r\n" + headers + "\r\n" + text};
}

/// The connection stays for the question that follows: a browser that finds it closed may ask twice.
inline RawAnswer RedirectTo(const QByteArray& address) {
    return {.bytes = "HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: " + address + "\r\n\r\n", .closes = false};
}

class LoopbackServer {
  public:
    /// With TLS or without, as `server` is.
    explicit LoopbackServer(std::unique_ptr<QTcpServer> server = std::make_unique<QTcpServer>())
        : server_(std::move(server)) {
        // A proxy would be asked for this computer too.
        for (const char* name : {"http_proxy", "https_proxy", "all_proxy", "HTTP_PROXY", "HTTPS_PROXY", "ALL_PROXY"})
            qunsetenv(name);
        server_->listen(QHostAddress::LocalHost);
        // With TLS a connection counts from the end of the handshake.
        QObject::connect(server_.get(), &QTcpServer::pendingConnectionAvailable, server_.get(), [this] {
            while (QTcpSocket* const socket = server_->nextPendingConnection()) Serve(*socket);
        });
    }
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    /// The beginning of its addresses.
    std::string Host() const { return Host("http"); }
    std::string Host(const std::string& scheme) const {
        return scheme + "://127.0.0.1:" + std::to_string(server_->serverPort());
    }

    /// Refuses whoever comes from now on.
    void Close() { server_->close(); }

    QHash<QByteArray, RawAnswer> answers;         ///< by path, with its query; any other is not found
    QList<QByteArray> asked;                      ///< paths, in the order in which they came
    QByteArray lastRequest;                       ///< the head of the last request
    std::function<void(const QByteArray&)> hook;  ///< told each path before it is answered
    int open = 0;                                 ///< connections that stand

  private:
    void Serve(QTcpSocket& socket) {
        ++open;
        QObject::connect(&socket, &QTcpSocket::disconnected, &socket, [this, &socket] {
            --open;
            socket.deleteLater();
        });
        QObject::connect(&socket, &QTcpSocket::readyRead, &socket, [this, &socket, head = QByteArray()]() mutable {
            head += socket.readAll();
            // Who begins with something other than a word speaks another language; a server does not listen on.
            if (head[0] < 'A') return socket.disconnectFromHost();
            if (!head.contains("\r\n\r\n")) return;
            lastRequest = std::exchange(head, {});
            const QByteArray path = lastRequest.split(' ').value(1);
            asked << path;
            if (hook) hook(path);
            Write(socket, answers.value(path, TextAnswer("not here", "404 Not Found")));
        });
    }

    static void WriteSlowly(QTcpSocket& socket, const RawAnswer& answer) {
        constexpr int kSlowBytes = 8;
        socket.write(answer.bytes.chopped(kSlowBytes));
        for (int i = 1; i <= kSlowBytes; ++i)
            QTimer::singleShot(i * answer.pause, &socket,
                               [&socket, byte = answer.bytes.right(kSlowBytes).mid(i - 1, 1)] { socket.write(byte); });
    }

    static void Write(QTcpSocket& socket, const RawAnswer& answer) {
        if (answer.pause != 0) {
            WriteSlowly(socket, answer);
            return;
        }
        socket.write(answer.bytes);
        if (answer.endless) {
            constexpr qsizetype kPart = 65536;
            constexpr qint64 kMostWaiting = qint64{1} << 20;
            const auto more = [&socket, part = answer.bytes.right(kPart)] {
                while (socket.bytesToWrite() < kMostWaiting) socket.write(part);
            };
            QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, more);
            more();
        } else if (answer.closes) {
            socket.disconnectFromHost();
        }
    }

    std::unique_ptr<QTcpServer> server_;
};

}  // namespace glintara::testing
