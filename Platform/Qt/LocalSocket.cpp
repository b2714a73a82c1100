// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/LocalSocket.h"

#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace lumaro {

struct LocalSocketServer::State {
    Handler handler;
    QLocalServer server;

    void accept() {
        while (auto* const socket = server.nextPendingConnection()) {
            QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            QObject::connect(socket, &QLocalSocket::readyRead, socket, [this, socket] { read(*socket); });
            read(*socket);
        }
    }

    void read(QLocalSocket& socket) const {
        while (socket.canReadLine()) {
            auto line = socket.readLine().toStdString();
            line.pop_back();
            handler(std::move(line), [caller = QPointer{&socket}](std::string_view answer) {
                if (!caller) return;
                caller->write(answer.data(), static_cast<qint64>(answer.size()));
                caller->write("\n", 1);
                caller->flush();
            });
        }
        if (socket.bytesAvailable() > static_cast<qint64>(maxLineBytes)) socket.abort();
    }
};

LocalSocketServer::LocalSocketServer(std::unique_ptr<State> state) : state_(std::move(state)) {
}

LocalSocketServer::~LocalSocketServer() = default;

std::expected<std::unique_ptr<LocalSocketServer>, std::string> LocalSocketServer::listen(const std::string& path,
                                                                                         Handler handler) {
    auto state = std::make_unique<State>();
    state->handler = std::move(handler);
    const auto name = QString::fromStdString(path);
    state->server.setSocketOptions(QLocalServer::UserAccessOption);
    QLocalServer::removeServer(name);
    QObject::connect(&state->server, &QLocalServer::newConnection, &state->server,
                     [raw = state.get()] { raw->accept(); });
    if (!state->server.listen(name)) return std::unexpected(state->server.errorString().toStdString());
    // Qt gives its owner the right to execute it, too.
    QFile::setPermissions(name, QFile::ReadOwner | QFile::WriteOwner);
    return std::unique_ptr<LocalSocketServer>{new LocalSocketServer{std::move(state)}};
}

struct LocalSocketCall::State {
    QLocalSocket socket;
    QTimer timer;
    QObject context;
    std::move_only_function<void(Answer)> then;
    bool wasSent = false;
    std::optional<Answer> told;

    void finish(Answer answer) {
        if (told) return;
        told = std::move(answer);
        QMetaObject::invokeMethod(&context, [this] { tell(); }, Qt::QueuedConnection);
    }

    void tell() {
        // From locals: it may drop this call.
        auto call = std::move(then);
        auto answer = std::move(*told);
        call(std::move(answer));
    }

    void read() {
        if (!socket.canReadLine()) return;
        auto line = socket.readLine().toStdString();
        line.pop_back();
        finish(std::move(line));
    }

    void ended() {
        read();
        finish(std::unexpected(wasSent ? Fault::cut : Fault::unreachable));
    }
};

LocalSocketCall::LocalSocketCall(const std::string& path, std::string_view line, Seconds timeout,
                                 std::move_only_function<void(Answer)> then)
    : state_(std::make_unique<State>()) {
    auto* const state = state_.get();
    state->then = std::move(then);
    QObject::connect(&state->socket, &QLocalSocket::connected, &state->context, [state, text = std::string{line}] {
        state->wasSent = true;
        state->socket.write(text.data(), static_cast<qint64>(text.size()));
        state->socket.write("\n", 1);
    });
    QObject::connect(&state->socket, &QLocalSocket::readyRead, &state->context, [state] { state->read(); });
    QObject::connect(&state->socket, &QLocalSocket::disconnected, &state->context, [state] { state->ended(); });
    QObject::connect(&state->socket, &QLocalSocket::errorOccurred, &state->context, [state] { state->ended(); });
    state->timer.setSingleShot(true);
    QObject::connect(&state->timer, &QTimer::timeout, &state->context, [state] { state->ended(); });
    state->timer.start(static_cast<int>(std::clamp(std::ceil(timeout.count() * 1000), 0.0, 1e9)));
    state->socket.connectToServer(QString::fromStdString(path));
}

LocalSocketCall::~LocalSocketCall() = default;

} // namespace lumaro
