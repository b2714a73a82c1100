// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/QtWebSocketTransport.h"

#include "Platform/Qt/SystemProxy.h"

#include <QNetworkRequest>
#include <QTimer>
#include <QWebSocket>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace lumaro {
namespace {

// How long a dropped connection may take to say goodbye.
constexpr std::chrono::seconds farewell{2};

QNetworkRequest requestFor(const WebSocketRequest& request) {
    QNetworkRequest qt{QUrl{QString::fromStdString(request.url)}};
    for (const auto& header : request.headers) {
        qt.setRawHeader(QByteArray::fromStdString(header.name), QByteArray::fromStdString(header.value));
    }
    return qt;
}

class QtWebSocketConnection final : public WebSocketConnection {
public:
    QtWebSocketConnection(const WebSocketRequest& request, WebSocketListener& listener, QObject& sockets)
        : listener_(listener), socket_(new QWebSocket{QString{}, QWebSocketProtocol::VersionLatest, &sockets}) {
        socket_->setMaxAllowedIncomingFrameSize(QtWebSocketTransport::maxMessageBytes);
        socket_->setMaxAllowedIncomingMessageSize(QtWebSocketTransport::maxMessageBytes);
        // One frame a message.
        socket_->setOutgoingFrameSize(QWebSocket::maxOutgoingFrameSize());
        connectEvents();
        limitOpening(request.timeout);
        // From the event loop: a socket that fails at once would tell it from within this call.
        QMetaObject::invokeMethod(
            &context_,
            [this, qt = requestFor(request)] {
                socket_->setProxy(systemProxyFor(qt.url()));
                socket_->open(qt);
            },
            Qt::QueuedConnection);
    }
    QtWebSocketConnection(const QtWebSocketConnection&) = delete;
    QtWebSocketConnection& operator=(const QtWebSocketConnection&) = delete;
    ~QtWebSocketConnection() override { release(); }

    bool send(std::string_view text) override {
        if (!isOpen_ || end_) return false;
        const auto sent = socket_->sendTextMessage(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
        return sent > 0 || text.empty();
    }

    std::size_t bytesToWrite() const override {
        return socket_ == nullptr ? 0 : static_cast<std::size_t>(std::max<qint64>(socket_->bytesToWrite(), 0));
    }

private:
    // Every lambda ends with its call to the listener, which may drop this connection.
    void connectEvents() {
        QObject::connect(socket_, &QWebSocket::connected, &context_, [this] {
            isOpen_ = true;
            opening_.stop();
            listener_.opened();
        });
        QObject::connect(socket_, &QWebSocket::textMessageReceived, &context_, [this](const QString& message) {
            const auto bytes = message.toUtf8();
            listener_.received({bytes.constData(), static_cast<std::size_t>(bytes.size())});
        });
        QObject::connect(socket_, &QWebSocket::binaryMessageReceived, &context_, [this](const QByteArray& message) {
            listener_.received({message.constData(), static_cast<std::size_t>(message.size())});
        });
        QObject::connect(
            socket_, &QWebSocket::bytesWritten, &context_,
            [this] {
                if (isOpen_) listener_.writable();
            },
            Qt::QueuedConnection);
        // Only a close frame leads to it, not the end of the stream.
        QObject::connect(socket_, &QWebSocket::aboutToClose, &context_, [this] { sawCloseFrame_ = true; });
        QObject::connect(socket_, &QWebSocket::disconnected, &context_, [this] { end(WebSocketEnd::Closed{}); });
        QObject::connect(socket_, qOverload<QAbstractSocket::SocketError>(&QWebSocket::error), &context_,
                         [this](QAbstractSocket::SocketError error) { end(endOf(error)); });
    }

    void limitOpening(Seconds timeout) {
        constexpr double longest = std::numeric_limits<int>::max();
        opening_.setSingleShot(true);
        QObject::connect(&opening_, &QTimer::timeout, &context_,
                         [this] { end(WebSocketEnd::Failed{"the socket did not open in time"}); });
        opening_.start(static_cast<int>(std::clamp(std::ceil(timeout.count() * 1000), 0.0, longest)));
    }

    decltype(WebSocketEnd::value) endOf(QAbstractSocket::SocketError error) const {
        if (error == QAbstractSocket::RemoteHostClosedError) return WebSocketEnd::Closed{};
        // A handshake that failed is told as a refused connection; only one that came to a port was the server's word.
        const bool wasReached = socket_->localPort() != 0;
        if (!isOpen_ && wasReached && error == QAbstractSocket::ConnectionRefusedError) return WebSocketEnd::Refused{};
        return WebSocketEnd::Failed{socket_->errorString().toStdString()};
    }

    // The first end counts, but Qt tells that a socket is no longer connected before it tells why. The end is told
    // behind the messages that have come and wait in Qt's queue, so that a close frame among them is seen.
    void end(decltype(WebSocketEnd::value) end) {
        if (end_ && !std::holds_alternative<WebSocketEnd::Closed>(*end_)) return;
        if (!end_) QMetaObject::invokeMethod(&context_, [this] { tellEnd(); }, Qt::QueuedConnection);
        end_ = std::move(end);
    }

    void tellEnd() {
        auto told = std::move(*end_);
        if (auto* closed = std::get_if<WebSocketEnd::Closed>(&told); closed != nullptr && sawCloseFrame_) {
            closed->code = socket_->closeCode();
        }
        release();
        listener_.ended({std::move(told)});
    }

    // Lets go of the socket. It may be the one that is calling: it goes later, with a close frame where it is open.
    void release() {
        if (socket_ == nullptr) return;
        auto* const socket = std::exchange(socket_, nullptr);
        opening_.stop();
        socket->disconnect(&context_);
        if (!isOpen_ || end_) {
            socket->deleteLater();
            return;
        }
        QObject::connect(socket, &QWebSocket::disconnected, socket, &QObject::deleteLater);
        QTimer::singleShot(farewell, socket, &QObject::deleteLater);
        socket->close(QWebSocketProtocol::CloseCodeNormal);
    }

    WebSocketListener& listener_;
    QWebSocket* socket_;
    bool isOpen_ = false;
    bool sawCloseFrame_ = false;
    std::optional<decltype(WebSocketEnd::value)> end_;
    QTimer opening_;
    QObject context_;
};

} // namespace

QtWebSocketTransport::QtWebSocketTransport() : sockets_(std::make_unique<QObject>()) {
}

QtWebSocketTransport::~QtWebSocketTransport() = default;

std::unique_ptr<WebSocketConnection> QtWebSocketTransport::open(const WebSocketRequest& request,
                                                                WebSocketListener& listener) {
    return std::make_unique<QtWebSocketConnection>(request, listener, *sockets_);
}

} // namespace lumaro
