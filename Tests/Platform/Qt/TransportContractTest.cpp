// SPDX-License-Identifier: Apache-2.0
// What the client's ports to the network promise, held by those on Qt against servers on the loopback.
#include "LumaroCore/Support/Overloaded.h"
#include "Platform/Qt/QtHttpClient.h"
#include "Platform/Qt/QtSleeper.h"
#include "Platform/Qt/QtWebSocketTransport.h"
#include "Tests/Platform/Qt/QtTest.h"

#include <QWebSocket>
#include <QWebSocketServer>

#include <vector>

namespace lumaro {
namespace {

std::string textOf(const WebSocketEnd& end) {
    return std::visit(
        Overloaded{[](const WebSocketEnd::Refused& refused) { return "refused " + std::to_string(refused.status); },
                   [](const WebSocketEnd::Closed& closed) { return "closed " + std::to_string(closed.code); },
                   [](const WebSocketEnd::Failed&) { return std::string{"failed"}; }},
        end.value);
}

struct Listener final : WebSocketListener {
    std::vector<std::string> events;
    std::size_t writables = 0;
    std::function<void(const std::string& event)> then = [](const std::string&) {};

    void opened() override { heard("opened"); }
    void received(std::string_view bytes) override { heard("received " + std::string{bytes}); }
    void writable() override { ++writables; }
    void ended(WebSocketEnd end) override { heard(textOf(end)); }
    void heard(const std::string& event) {
        events.push_back(event);
        then(event);
    }
    auto has(std::size_t count) const {
        return [this, count] { return events.size() >= count; };
    }
};

// A room of this process: the far ends of sockets, and what they heard.
struct FarSide {
    // Heard until the last socket has gone.
    std::vector<std::string> heard;
    std::vector<std::string> upgrades;
    std::vector<int> closeCodes;
    QWebSocketServer server{QStringLiteral("room"), QWebSocketServer::NonSecureMode};
    std::vector<std::unique_ptr<QWebSocket>> sockets;

    FarSide() {
        EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
        QObject::connect(&server, &QWebSocketServer::newConnection, &server, [this] {
            auto* const socket = sockets.emplace_back(server.nextPendingConnection()).get();
            upgrades.push_back(socket->request().rawHeader("authorization").toStdString());
            QObject::connect(socket, &QWebSocket::textMessageReceived, socket,
                             [this](const QString& text) { heard.push_back(text.toStdString()); });
            QObject::connect(socket, &QWebSocket::disconnected, socket,
                             [this, socket] { closeCodes.push_back(socket->closeCode()); });
        });
    }
    std::string url() const { return "ws://127.0.0.1:" + std::to_string(server.serverPort()) + "/couples/x/ws"; }
    QWebSocket& socket() { return *sockets.at(0); }
};

// Codes of applications have no name in Qt.
void closeWith(QWebSocket& socket, int code) {
    socket.close(static_cast<QWebSocketProtocol::CloseCode>(code));
}

class TransportContract : public QtTest {
protected:
    std::vector<std::string> eventsOf(const std::string& url, Seconds timeout = Seconds{20}) {
        Listener own;
        const auto opening = transport.open({url, {}, timeout}, own);
        EXPECT_TRUE(own.events.empty());
        waitUntil(own.has(1));
        settle();
        return own.events;
    }
    // Opens a socket to the far side, whose end comes first.
    void open() {
        connection = transport.open({far.url(), {{"authorization", "Bearer x"}}, Seconds{20}}, listener);
        waitUntil([this] { return !listener.events.empty() && !far.sockets.empty(); });
    }

    QtWebSocketTransport transport;
    FarSide far;
    Listener listener;
    std::unique_ptr<WebSocketConnection> connection;
};

TEST_F(TransportContract, P19_CarriesMessagesOfAnySizeBothWays) {
    open();
    EXPECT_EQ(far.upgrades, std::vector<std::string>{"Bearer x"});
    const std::vector<std::string> texts{"", "h\xc3\xa9", std::string(std::size_t{4} << 20, 'x')};
    std::vector<std::string> expected{"opened"};
    for (const auto& text : texts) {
        EXPECT_TRUE(connection->send(text));
        far.socket().sendTextMessage(QString::fromStdString(text));
        far.socket().sendBinaryMessage(QByteArray::fromStdString(text));
        expected.insert(expected.end(), 2, "received " + text);
    }
    waitUntil([&] { return far.heard.size() == texts.size() && listener.has(expected.size())(); });
    EXPECT_EQ(far.heard, texts);
    EXPECT_EQ(listener.events, expected);
}

TEST_F(TransportContract, TellsHowMuchWaitsAndWhenSomeHasGone) {
    open();
    EXPECT_EQ(connection->bytesToWrite(), 0U);
    for (int i = 0; i < 8; ++i) EXPECT_TRUE(connection->send(std::string(std::size_t{1} << 20, 'x')));
    EXPECT_GE(connection->bytesToWrite(), std::size_t{8} << 20);
    EXPECT_EQ(listener.writables, 0U);
    waitUntil([&] { return connection->bytesToWrite() == 0; });
    settle();
    EXPECT_GT(listener.writables, 0U);
}

TEST_F(TransportContract, TellsHowASocketEnded) {
    const std::vector<std::pair<std::function<void(QWebSocket&)>, std::string>> cases = {
        {[](QWebSocket& socket) { closeWith(socket, 4401); }, "closed 4401"},
        {[](QWebSocket& socket) { socket.close(); }, "closed 1000"},
        {[](QWebSocket& socket) { socket.abort(); }, "closed 0"}};
    for (const auto& [end, expected] : cases) {
        open();
        far.socket().sendTextMessage(QStringLiteral("last"));
        far.socket().flush();
        end(far.socket());
        waitUntil(listener.has(3));
        settle();
        EXPECT_EQ(listener.events, (std::vector<std::string>{"opened", "received last", expected}));
        EXPECT_FALSE(connection->send("late"));
        listener.events.clear();
        far.sockets.clear();
    }
}

TEST_F(TransportContract, P18_TellsARefusalFromALineThatFailed) {
    const std::string end = "\r\n\r\n";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"HTTP/1.1 401 Unauthorized\r\nContent-Length: 2" + end + "{}", "refused 0"},
        {"HTTP/1.1 400 Bad Request" + end, "refused 0"},
        {"HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
         "Sec-WebSocket-Accept: AAAA" +
             end,
         "refused 0"},
        {"220 mail.example ESMTP" + end, "refused 0"},
        {"", "closed 0"}};
    for (const auto& [answer, expected] : cases) {
        const RawServer server{saying(answer)};
        EXPECT_EQ(eventsOf("ws://" + server.address() + "/"), std::vector{expected}) << answer;
    }
    const std::string gone = "ws://" + RawServer{saying("")}.address() + "/";
    for (const std::string& url : {gone, std::string{"mailto:x"}, std::string{"ws://"}, std::string{""}}) {
        EXPECT_EQ(eventsOf(url), std::vector<std::string>{"failed"}) << url;
    }
}

TEST_F(TransportContract, GivesUpAHandshakeThatHangs) {
    const RawServer server{[](QTcpSocket&, const std::string&) {}};
    EXPECT_EQ(eventsOf("ws://" + server.address() + "/", Seconds{0.05}), std::vector<std::string>{"failed"});
    EXPECT_EQ(eventsOf(far.url(), Seconds{20}), std::vector<std::string>{"opened"});
}

TEST_F(TransportContract, LetsAnyEventDropTheConnection) {
    for (const std::string last : {"opened", "received x", "closed 1001"}) {
        listener.then = [&](const std::string& event) {
            if (event == last) connection.reset();
        };
        open();
        for (int i = 0; i < 3; ++i) far.socket().sendTextMessage(QStringLiteral("x"));
        if (last == "closed 1001") far.socket().close(QWebSocketProtocol::CloseCodeGoingAway);
        waitUntil([&] { return connection == nullptr && far.closeCodes.size() == 1; });
        settle();
        EXPECT_EQ(listener.events.back(), last);
        EXPECT_EQ(far.closeCodes, std::vector<int>{last == "closed 1001" ? 1001 : 1000});
        listener.events.clear();
        far.closeCodes.clear();
        far.sockets.clear();
    }
}

class HttpContract : public QtTest {
protected:
    std::string answerOf(HttpRequest request) {
        std::string answer;
        const auto call = http.send(std::move(request), [&](HttpClient::Answer got) {
            answer = got ? std::to_string(got->status) + " " + got->body : "failed";
        });
        EXPECT_EQ(answer, "");
        waitUntil([&] { return !answer.empty(); });
        return answer;
    }
    std::string get(const std::string& url, Seconds timeout = Seconds{20}) {
        return answerOf({"GET", url, {}, "", timeout});
    }

    QtHttpClient http;
};

TEST_F(HttpContract, GivesEveryStatusWithItsBody) {
    for (const char* status : {"201 Created", "302 Found", "401 Unauthorized", "409 Conflict", "503 Unavailable"}) {
        const RawServer server{saying("HTTP/1.1 " + std::string{status} + "\r\nContent-Length: 2\r\n\r\n{}")};
        EXPECT_EQ(get("http://" + server.address() + "/x"), (std::string{status, 3} + " {}"));
    }
}

TEST_F(HttpContract, SendsMethodHeadersAndBody) {
    std::string request;
    const RawServer server{[&](QTcpSocket& socket, const std::string& head) {
        request = head;
        saying("HTTP/1.1 204 No Content\r\n\r\n")(socket, head);
    }};
    const std::string url = "http://" + server.address() + "/couples?q=1";
    for (const char* method : {"POST", "PUT", "DELETE"}) {
        EXPECT_EQ(
            answerOf({method, url, {{"content-type", "application/json"}, {"x-lmr-client", "mac/1"}}, "{\"a\":1}"}),
            "204 ");
        EXPECT_TRUE(request.starts_with(std::string{method} + " /couples?q=1 HTTP/1.1\r\n")) << request;
        EXPECT_NE(request.find("x-lmr-client: mac/1\r\n"), std::string::npos) << request;
        EXPECT_NE(request.find("content-type: application/json\r\n"), std::string::npos) << request;
    }
}

TEST_F(HttpContract, FollowsNoRedirectToAnotherHost) {
    const auto found = [](const std::string& where) { return "HTTP/1.1 302 Found\r\nLocation: " + where + "\r\n\r\n"; };
    const RawServer other{saying("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nother")};
    const RawServer server{[&](QTcpSocket& socket, const std::string& head) {
        const bool away = head.starts_with("GET /away");
        const bool here = head.starts_with("GET /here");
        saying(away                            ? found("http://" + other.address() + "/")
               : here                          ? found("/end")
               : head.starts_with("GET /loop") ? found("/loop")
                                               : "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nend")(socket, head);
    }};
    EXPECT_EQ(get("http://" + server.address() + "/away"), "302 ");
    EXPECT_EQ(other.requests, 0);
    EXPECT_EQ(get("http://" + server.address() + "/here"), "200 end");
    EXPECT_EQ(get("http://" + server.address() + "/loop"), "302 ");
}

TEST_F(HttpContract, FailsWhereNoWholeAnswerCame) {
    const RawServer cut{saying("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf")};
    const RawServer silent{saying("")};
    const RawServer garbage{saying("220 mail.example ESMTP\r\n\r\n")};
    const RawServer hanging{[](QTcpSocket&, const std::string&) {}};
    const std::string gone = "http://" + RawServer{saying("")}.address() + "/";
    for (const auto* server : {&cut, &silent, &garbage}) EXPECT_EQ(get("http://" + server->address() + "/"), "failed");
    EXPECT_EQ(get("http://" + hanging.address() + "/", Seconds{0.05}), "failed");
    for (const std::string& url : {gone, std::string{"nothing://x"}, std::string{""}}) EXPECT_EQ(get(url), "failed");
}

TEST_F(HttpContract, TakesInNoMoreThanWasAllowed) {
    const auto limited = [this](const RawServer& server, std::size_t limit) {
        return answerOf({"GET", "http://" + server.address() + "/", {}, "", Seconds{20}, limit});
    };
    const RawServer exact{saying("HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nfour")};
    EXPECT_EQ(limited(exact, 4), "200 four");
    EXPECT_EQ(limited(exact, 3), "failed");
    // It says that as much comes, or not how much, and goes on for ever.
    for (const std::string head : {"Content-Length: 104857600\r\n", ""}) {
        const RawServer endless{[&](QTcpSocket& socket, const std::string&) {
            socket.write(QByteArray::fromStdString("HTTP/1.1 200 OK\r\n" + head + "\r\n"));
            const auto more = [&socket] { socket.write(QByteArray(65536, 'x')); };
            QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, more);
            more();
        }};
        EXPECT_EQ(limited(endless, 2'097'152), "failed");
    }
}

TEST_F(HttpContract, CallsNobodyOnceACallIsDropped) {
    const RawServer server{saying("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n")};
    int calls = 0;
    auto dropped = http.send({"GET", "http://" + server.address() + "/", {}, ""}, [&](const auto&) { ++calls; });
    dropped.reset();
    std::unique_ptr<HttpClient::Call> own;
    for (const double timeout : {20.0, 0.0}) {
        own = http.send({"GET", "http://" + server.address() + "/", {}, "", Seconds{timeout}}, [&](const auto&) {
            own.reset();
            ++calls;
        });
        waitUntil([&] { return own == nullptr; });
    }
    settle();
    EXPECT_EQ(calls, 2);
}

class SleeperContract : public QtTest {};

TEST_F(SleeperContract, RingsOnceInOrderAndNeverTooEarly) {
    QtSleeper sleeper;
    std::vector<int> rung;
    const auto start = std::chrono::steady_clock::now();
    Seconds slept{0};
    const auto later = sleeper.wait(Seconds{0.03}, [&] {
        rung.push_back(2);
        slept = std::chrono::steady_clock::now() - start;
    });
    std::unique_ptr<Sleeper::Wait> own;
    own = sleeper.wait(Seconds{0}, [&] {
        rung.push_back(1);
        own.reset();
    });
    sleeper.wait(Seconds{0}, [&] { rung.push_back(3); }).reset();
    const auto never = sleeper.wait(Seconds{1e12}, [&] { rung.push_back(4); });
    EXPECT_TRUE(rung.empty());
    waitUntil([&] { return rung.size() == 2; });
    EXPECT_EQ(rung, (std::vector{1, 2}));
    EXPECT_GE(slept, Seconds{0.03});
}

} // namespace
} // namespace lumaro
