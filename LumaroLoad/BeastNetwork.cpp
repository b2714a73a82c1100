// SPDX-License-Identifier: Apache-2.0
#include "LumaroLoad/LoadNetwork.h"

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace lumaro {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
namespace websocket = beast::websocket;
using Tcp = asio::ip::tcp;
using ErrorCode = beast::error_code;

// Uses of one source address before the next one's turn; a room takes 100 sockets from one.
constexpr std::uint32_t usesOfSource = 50;
constexpr std::uint32_t sourcesOfNetwork = 1 << 14;
constexpr std::size_t largestMessage = std::size_t{16} << 20;
// Of an HTTP answer, read and not taken up yet.
constexpr std::size_t largestBuffer = std::size_t{64} << 10;
// A board's welcome is large and comes once; what it took is given back.
constexpr std::size_t keptBuffer = 4096;

struct Target {
    Tcp::endpoint endpoint;
    std::string host; // as it stands in the Host header
};

// What the ports of one network share.
struct Loop {
    asio::io_context context{1};
    Target target;
    std::uint32_t firstSource = 0;
    std::uint32_t uses = 0;

    // Opens the socket, at the next source address when the server is on the loopback.
    ErrorCode prepare(Tcp::socket& socket) {
        ErrorCode error;
        socket.open(target.endpoint.protocol(), error);
        if (error || !target.endpoint.address().is_loopback() || !target.endpoint.address().is_v4()) return error;
        const std::uint32_t source = firstSource + uses++ / usesOfSource % sourcesOfNetwork;
        socket.bind({asio::ip::address_v4{source}, 0}, error);
        return error;
    }
};

// The path of a URL whose server is the loop's.
std::string pathOf(std::string_view url) {
    const auto scheme = url.find("://");
    const auto slash = scheme == std::string_view::npos ? scheme : url.find('/', scheme + 3);
    return slash == std::string_view::npos ? "/" : std::string{url.substr(slash)};
}

// One request on a connection of its own.
class Exchange : public std::enable_shared_from_this<Exchange> {
public:
    Exchange(Loop& loop, const HttpRequest& request, std::move_only_function<void(HttpClient::Answer)> then)
        : loop_(loop), stream_(loop.context), then_(std::move(then)) {
        request_.method_string(request.method);
        request_.target(pathOf(request.url));
        request_.set(http::field::host, loop.target.host);
        request_.set(http::field::connection, "close");
        for (const HttpHeader& header : request.headers) request_.set(header.name, header.value);
        request_.body() = request.body;
        request_.prepare_payload();
        stream_.expires_after(std::chrono::duration_cast<std::chrono::milliseconds>(request.timeout));
    }

    void start() {
        if (const auto error = loop_.prepare(stream_.socket())) {
            asio::post(loop_.context, [self = shared_from_this(), error] { self->finish(error); });
            return;
        }
        stream_.async_connect(loop_.target.endpoint, [self = shared_from_this()](ErrorCode error) {
            if (error) return self->finish(error);
            self->write();
        });
    }

    void cancel() {
        then_ = nullptr;
        stream_.cancel();
    }

private:
    void write() {
        http::async_write(stream_, request_, [self = shared_from_this()](ErrorCode error, std::size_t) {
            if (error) return self->finish(error);
            http::async_read(self->stream_, self->buffer_, self->response_,
                             [self](ErrorCode readError, std::size_t) { self->finish(readError); });
        });
    }

    void finish(ErrorCode error) {
        stream_.close();
        auto then = std::exchange(then_, nullptr);
        if (!then) return;
        if (error) return then(std::unexpected(HttpFailure{error.message()}));
        then(HttpResponse{.status = static_cast<int>(response_.result_int()), .body = std::move(response_.body())});
    }

    Loop& loop_;
    beast::tcp_stream stream_;
    http::request<http::string_body> request_;
    http::response<http::string_body> response_;
    beast::flat_buffer buffer_{largestBuffer};
    std::move_only_function<void(HttpClient::Answer)> then_;
};

class BeastHttpClient final : public HttpClient {
public:
    explicit BeastHttpClient(Loop& loop) : loop_(loop) {}

    std::unique_ptr<Call> send(HttpRequest request, std::move_only_function<void(Answer)> then) override {
        auto exchange = std::make_shared<Exchange>(loop_, request, std::move(then));
        exchange->start();
        return std::make_unique<BeastCall>(std::move(exchange));
    }

private:
    struct BeastCall final : Call {
        explicit BeastCall(std::shared_ptr<Exchange> running) : exchange(std::move(running)) {}
        BeastCall(const BeastCall&) = delete;
        BeastCall& operator=(const BeastCall&) = delete;
        ~BeastCall() override { exchange->cancel(); }
        std::shared_ptr<Exchange> exchange;
    };

    Loop& loop_;
};

// One socket. The operations under way keep it; it speaks to its listener until it is dropped.
class Socket : public std::enable_shared_from_this<Socket> {
public:
    Socket(Loop& loop, const WebSocketRequest& request, WebSocketListener& listener)
        : loop_(loop), stream_(loop.context), listener_(&listener), path_(pathOf(request.url)) {
        stream_.set_option(websocket::stream_base::timeout{
            .handshake_timeout = std::chrono::duration_cast<std::chrono::milliseconds>(request.timeout),
            .idle_timeout = websocket::stream_base::none(),
            .keep_alive_pings = false});
        stream_.set_option(
            websocket::stream_base::decorator([headers = request.headers](websocket::request_type& upgrade) {
                for (const HttpHeader& header : headers) upgrade.set(header.name, header.value);
            }));
        stream_.read_message_max(largestMessage);
        stream_.auto_fragment(false);
        stream_.secure_prng(false);
    }

    void start() {
        auto& socket = stream_.next_layer();
        if (const auto error = loop_.prepare(socket)) {
            asio::post(loop_.context, [self = shared_from_this(), error] { self->fail(error); });
            return;
        }
        socket.async_connect(loop_.target.endpoint, [self = shared_from_this()](ErrorCode error) {
            if (error) return self->fail(error);
            self->upgrade();
        });
    }

    bool send(std::string_view text) {
        if (!isOpen_) return false;
        queue_.emplace_back(text);
        queuedBytes_ += text.size();
        if (queue_.size() == 1) write();
        return true;
    }

    std::size_t queuedBytes() const { return queuedBytes_; }

    void drop() {
        listener_ = nullptr;
        if (!std::exchange(isOpen_, false)) {
            ErrorCode ignored;
            stream_.next_layer().close(ignored);
        } else if (queue_.empty()) {
            close();
        }
    }

private:
    void upgrade() {
        ErrorCode ignored;
        stream_.next_layer().set_option(Tcp::no_delay{true}, ignored);
        stream_.async_handshake(response_, loop_.target.host, path_, [self = shared_from_this()](ErrorCode error) {
            if (error) return self->fail(error);
            if (!self->listener_) return;
            self->isOpen_ = true;
            self->listener_->opened();
            self->read();
        });
    }

    void read() {
        stream_.async_read(buffer_, [self = shared_from_this()](ErrorCode error, std::size_t) {
            if (error) return self->fail(error);
            self->received();
        });
    }

    void received() {
        const auto bytes = buffer_.cdata();
        if (listener_) listener_->received({static_cast<const char*>(bytes.data()), bytes.size()});
        buffer_.clear();
        if (buffer_.capacity() > keptBuffer) buffer_.shrink_to_fit();
        if (listener_) read();
    }

    void write() {
        stream_.async_write(asio::buffer(queue_.front()), [self = shared_from_this()](ErrorCode error, std::size_t) {
            self->queuedBytes_ -= self->queue_.front().size();
            self->queue_.pop_front();
            if (error) return self->fail(error);
            if (!self->queue_.empty()) return self->write();
            if (!self->listener_) return self->close();
            self->listener_->writable();
        });
    }

    void close() {
        stream_.async_close(websocket::close_code::normal, [self = shared_from_this()](ErrorCode) {});
    }

    void fail(ErrorCode error) {
        isOpen_ = false;
        auto* const listener = std::exchange(listener_, nullptr);
        if (!listener) return;
        if (error == websocket::error::upgrade_declined)
            return listener->ended({WebSocketEnd::Refused{static_cast<int>(response_.result_int())}});
        if (error == websocket::error::closed) return listener->ended({WebSocketEnd::Closed{stream_.reason().code}});
        if (error == asio::error::eof) return listener->ended({WebSocketEnd::Closed{}});
        listener->ended({WebSocketEnd::Failed{error.message()}});
    }

    Loop& loop_;
    websocket::stream<Tcp::socket> stream_;
    WebSocketListener* listener_;
    std::string path_;
    websocket::response_type response_;
    beast::flat_buffer buffer_;
    std::deque<std::string> queue_;
    std::size_t queuedBytes_ = 0;
    bool isOpen_ = false;
};

class BeastTransport final : public WebSocketTransport {
public:
    explicit BeastTransport(Loop& loop) : loop_(loop) {}

    std::unique_ptr<WebSocketConnection> open(const WebSocketRequest& request, WebSocketListener& listener) override {
        auto socket = std::make_shared<Socket>(loop_, request, listener);
        socket->start();
        return std::make_unique<Connection>(std::move(socket));
    }

private:
    struct Connection final : WebSocketConnection {
        explicit Connection(std::shared_ptr<Socket> opening) : socket(std::move(opening)) {}
        Connection(const Connection&) = delete;
        Connection& operator=(const Connection&) = delete;
        ~Connection() override { socket->drop(); }
        bool send(std::string_view text) override { return socket->send(text); }
        std::size_t bytesToWrite() const override { return socket->queuedBytes(); }
        std::shared_ptr<Socket> socket;
    };

    Loop& loop_;
};

class BeastSleeper final : public Sleeper {
public:
    explicit BeastSleeper(Loop& loop) : loop_(loop) {}

    std::unique_ptr<Wait> wait(Seconds span, std::move_only_function<void()> then) override {
        auto timer = std::make_shared<Timer>(asio::steady_timer{loop_.context}, std::move(then));
        timer->clock.expires_after(std::chrono::duration_cast<std::chrono::nanoseconds>(span));
        timer->clock.async_wait([timer](ErrorCode error) {
            auto wake = std::exchange(timer->then, nullptr);
            if (!error && wake) wake();
        });
        return std::make_unique<TimerWait>(std::move(timer));
    }

private:
    struct Timer {
        Timer(asio::steady_timer timer, std::move_only_function<void()> wake)
            : clock(std::move(timer)), then(std::move(wake)) {}
        asio::steady_timer clock;
        std::move_only_function<void()> then;
    };
    struct TimerWait final : Wait {
        explicit TimerWait(std::shared_ptr<Timer> running) : timer(std::move(running)) {}
        TimerWait(const TimerWait&) = delete;
        TimerWait& operator=(const TimerWait&) = delete;
        ~TimerWait() override {
            timer->then = nullptr;
            timer->clock.cancel();
        }
        std::shared_ptr<Timer> timer;
    };

    Loop& loop_;
};

class BeastNetwork final : public LoadNetwork {
public:
    BeastNetwork(Target target, unsigned number) : http_(loop_), sockets_(loop_), sleeper_(loop_) {
        loop_.target = std::move(target);
        // 127.64.0.1 and up; the first octets of every network are its own.
        loop_.firstSource = (127U << 24) + (64U << 16) + 1 + number * sourcesOfNetwork;
    }

    HttpClient& http() override { return http_; }
    WebSocketTransport& sockets() override { return sockets_; }
    Sleeper& sleeper() override { return sleeper_; }

    void run() override {
        const auto work = asio::make_work_guard(loop_.context);
        loop_.context.restart();
        loop_.context.run();
    }
    void stop() override { loop_.context.stop(); }

private:
    Loop loop_;
    BeastHttpClient http_;
    BeastTransport sockets_;
    BeastSleeper sleeper_;
};

std::expected<Target, std::string> resolve(const std::string& url) {
    static constexpr std::string_view scheme = "http://";
    if (!url.starts_with(scheme)) return std::unexpected("the server's URL must begin with http://");
    const std::string host = url.substr(scheme.size(), url.find('/', scheme.size()) - scheme.size());
    const auto colon = host.rfind(':');
    const std::string port = colon == std::string::npos ? "80" : host.substr(colon + 1);
    asio::io_context context;
    Tcp::resolver resolver{context};
    ErrorCode error;
    const auto found = resolver.resolve(host.substr(0, colon), port, error);
    if (error || found.empty()) return std::unexpected("the server is not known: " + error.message());
    return Target{.endpoint = found.begin()->endpoint(), .host = host};
}

} // namespace

std::expected<std::unique_ptr<LoadNetwork>, std::string> LoadNetwork::create(const std::string& serverURL,
                                                                             unsigned number) {
    auto target = resolve(serverURL);
    if (!target) return std::unexpected(std::move(target.error()));
    return std::make_unique<BeastNetwork>(std::move(*target), number);
}

} // namespace lumaro
