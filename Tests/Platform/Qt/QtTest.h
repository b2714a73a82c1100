// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <string>

namespace lumaro {

/// A test whose code lives in a Qt event loop, which runs only inside `waitUntil`.
class QtTest : public testing::Test {
protected:
    /// Runs the loop until `done`; a test that waits for ever fails.
    static void waitUntil(const std::function<bool()>& done) {
        bool isLate = false;
        QTimer deadline;
        QObject::connect(&deadline, &QTimer::timeout, &deadline, [&] { isLate = true; });
        deadline.start(std::chrono::seconds{20});
        while (!done() && !isLate) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        EXPECT_FALSE(isLate) << "waited in vain";
    }

    /// Lets everything happen that is about to.
    static void settle() {
        for (int i = 0; i < 50; ++i) QCoreApplication::processEvents();
    }

private:
    // One for all tests of the program, as Qt wants it.
    static QCoreApplication& application() {
        static int count = 1;
        static char name[] = "test";
        static char* arguments[] = {name, nullptr};
        static QCoreApplication application{count, arguments};
        return application;
    }
    QCoreApplication& application_ = application();
};

/// A server on the loopback that hands the head of each request to `answer`, once it is whole.
class RawServer {
public:
    using Answer = std::function<void(QTcpSocket& socket, const std::string& head)>;

    explicit RawServer(Answer answer) : answer_(std::move(answer)) {
        EXPECT_TRUE(server_.listen(QHostAddress::LocalHost));
        QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
            auto* const socket = server_.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
                const auto head = socket->peek(65536).toStdString();
                if (head.find("\r\n\r\n") == std::string::npos) return;
                socket->readAll();
                ++requests;
                answer_(*socket, head);
            });
        });
    }

    std::string address() const { return "127.0.0.1:" + std::to_string(server_.serverPort()); }
    int requests = 0;

private:
    Answer answer_;
    QTcpServer server_;
};

/// Answers every request with `text` and closes the connection.
inline RawServer::Answer saying(std::string text) {
    return [text = std::move(text)](QTcpSocket& socket, const std::string& /*head*/) {
        socket.write(text.data(), static_cast<qint64>(text.size()));
        socket.disconnectFromHost();
    };
}

} // namespace lumaro
