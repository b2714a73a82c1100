// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/HttpConnection.h"

#include "LumaroCore/Support/Overloaded.h"
#include "LumaroRoom/Server/BeastHttp.h"
#include "LumaroRoom/Server/CompletionOf.h"
#include "LumaroRoom/Server/Router.h"
#include "LumaroRoom/Server/Url.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/write.hpp>
#include <boost/beast/websocket/rfc6455.hpp>

#include <array>
#include <cstdint>
#include <optional>
#include <utility>

namespace lumaro {
namespace {

using Parser = http::request_parser<http::string_body>;

// What was read and is not taken up yet: the headers, the head of a chunk with its extension, the trailer. A body goes
// on as it comes.
constexpr std::size_t headersPerBuffer = 4;

// A connection is held by the coroutine that serves it.
template <class Stream>
class HttpConnection final : public Connection {
public:
    HttpConnection(Shard& shard, Stream stream, IpAddress peer)
        : Connection(shard), stream_(std::move(stream)), peer_(peer),
          buffer_(headersPerBuffer * shard.limits().maxHeaderBytes) {}

    static Awaitable<void> serve(std::unique_ptr<HttpConnection> self);

    void look(SteadyClock::time_point now) override {
        if (now > deadline_) cut();
    }
    void drain() override {
        if (isIdle_) cut();
    }

private:
    enum class Next : std::uint8_t { request, end, gone };

    Awaitable<bool> shakeHands();
    Awaitable<Next> serveOne();
    Awaitable<Next> readBody(Parser& parser, ServerRequest& request);
    Awaitable<Next> reply(ServerResponse response, bool keepsAlive);
    Awaitable<Next> refuse(error_code error);
    Awaitable<void> finish();
    void handOver(BeastRequest request, ServerRequest plain, std::string coupleId);

    ServerRequest plainRequest(const BeastRequest& request) const;
    bool isFromElsewhere(const BeastRequest& request) const;
    std::optional<std::string> coupleOfUpgrade(const BeastRequest& request, const ServerRequest& plain) const;

    TcpSocket& socket() {
        if constexpr (requires { stream_->next_layer(); }) {
            return stream_->next_layer();
        } else {
            return stream_;
        }
    }
    auto& stream() {
        if constexpr (requires { *stream_; }) {
            return *stream_;
        } else {
            return stream_;
        }
    }
    void cut() {
        error_code ignored;
        socket().close(ignored);
    }
    void allow(std::chrono::milliseconds time) { deadline_ = SteadyClock::now() + time; }

    Stream stream_; // a `TcpSocket`, or a `std::unique_ptr<TlsSocket>`
    IpAddress peer_;
    beast::flat_buffer buffer_;
    SteadyClock::time_point deadline_ = SteadyClock::time_point::max();
    bool isIdle_ = false;
};

template <class Stream>
Awaitable<void> HttpConnection<Stream>::serve(std::unique_ptr<HttpConnection> self) {
    if (!co_await self->shakeHands()) co_return;
    Next next = Next::request;
    while (next == Next::request) next = co_await self->serveOne();
    if (next == Next::end) co_await self->finish();
}

template <class Stream>
Awaitable<bool> HttpConnection<Stream>::shakeHands() {
    if constexpr (requires { stream_->next_layer(); }) {
        allow(shard().limits().requestTime);
        const auto [error] = co_await stream_->async_handshake(asio::ssl::stream_base::server, asTuple);
        co_return !error;
    }
    co_return true;
}

template <class Stream>
Awaitable<typename HttpConnection<Stream>::Next> HttpConnection<Stream>::serveOne() {
    if (shard().isDraining()) co_return Next::end;
    Parser parser;
    parser.header_limit(shard().limits().maxHeaderBytes);
    parser.body_limit(boost::none); // until it is known what is asked for
    isIdle_ = true;
    allow(shard().limits().keepAlive);
    const auto [error, size] = co_await http::async_read_header(stream(), buffer_, parser, asTuple);
    isIdle_ = false;
    if (error) co_return co_await refuse(error);
    allow(shard().limits().requestTime);

    auto request = plainRequest(parser.get());
    if (auto coupleId = coupleOfUpgrade(parser.get(), request)) {
        if (isFromElsewhere(parser.get())) {
            ++shard().figures().refusedUpgrades;
            co_return co_await reply(errorResponse(403, "wrong_origin", "sockets open from this server's pages alone"),
                                     false);
        }
        handOver(parser.release(), std::move(request), std::move(*coupleId));
        co_return Next::gone;
    }
    if (const auto next = co_await readBody(parser, request); next != Next::request) co_return next;
    const bool keepsAlive = parser.keep_alive();
    auto response = co_await completionOf<ServerResponse>(
        shard().executor(), [&](Respond respond) { shard().routes().handle(std::move(request), std::move(respond)); });
    co_return co_await reply(std::move(response), keepsAlive && !shard().isDraining());
}

// `request` once the body was read; any other when the request was answered without it.
template <class Stream>
Awaitable<typename HttpConnection<Stream>::Next> HttpConnection<Stream>::readBody(Parser& parser,
                                                                                  ServerRequest& request) {
    const auto limit = shard().routes().maxBody(request.method, request.path);
    if (parser.content_length().value_or(0) > limit) co_return co_await refuse(http::error::body_limit);
    parser.body_limit(limit);
    const auto announced = parser.chunked() ? limit : parser.content_length().value_or(0);
    if (announced > shard().limits().maxBodyBytes) {
        auto refusal = co_await completionOf<std::optional<ServerResponse>>(
            shard().executor(), [&](auto then) { shard().routes().admit(request, std::move(then)); });
        if (refusal) co_return co_await reply(std::move(*refusal), false);
    }
    if (beast::iequals(parser.get()[http::field::expect], "100-continue")) {
        static constexpr std::string_view goOn = "HTTP/1.1 100 Continue\r\n\r\n";
        const auto [error, size] = co_await asio::async_write(stream(), asio::buffer(goOn), asTuple);
        if (error) co_return Next::gone;
    }
    const auto [error, size] = co_await http::async_read(stream(), buffer_, parser, asTuple);
    // The head of a chunk, or the trailer, counts as body here.
    if (error == http::error::buffer_overflow) co_return co_await refuse(http::error::body_limit);
    if (error) co_return co_await refuse(error);
    request.body = std::move(parser.get().body());
    co_return Next::request;
}

template <class Stream>
Awaitable<typename HttpConnection<Stream>::Next> HttpConnection<Stream>::reply(ServerResponse response,
                                                                               bool keepsAlive) {
    constexpr unsigned version = 11;
    ++shard().figures().answers[static_cast<std::size_t>(response.status / 100)];
    const auto written = beastResponse(std::move(response), version, keepsAlive, shard().shared().clock.now());
    allow(shard().limits().requestTime);
    const auto [error, size] = co_await http::async_write(stream(), written, asTuple);
    if (error) co_return Next::gone;
    co_return keepsAlive ? Next::request : Next::end;
}

// Of a request that could not be read; one that only went away gets no answer.
template <class Stream>
Awaitable<typename HttpConnection<Stream>::Next> HttpConnection<Stream>::refuse(error_code error) {
    if (error == http::error::body_limit) {
        co_return co_await reply(errorResponse(413, "too_large", "this body is larger than it may be"), false);
    }
    if (error == http::error::header_limit || error == http::error::buffer_overflow) {
        co_return co_await reply(errorResponse(431, "too_large", "these headers are larger than they may be"), false);
    }
    if (error == http::error::end_of_stream || error == http::error::partial_message ||
        error.category() != http::make_error_code(http::error::end_of_stream).category()) {
        co_return Next::gone;
    }
    co_return co_await reply(errorResponse(400, "bad_request", "this is not HTTP"), false);
}

// Says that nothing follows and waits for the peer to say so: a connection that is closed while the peer still writes
// takes the answer with it.
template <class Stream>
Awaitable<void> HttpConnection<Stream>::finish() {
    allow(shard().limits().closingTime);
    error_code ignored;
    socket().shutdown(Tcp::socket::shutdown_send, ignored);
    std::array<char, 4096> unread{};
    for (;;) {
        const auto [error, size] = co_await socket().async_read_some(asio::buffer(unread), asTuple);
        if (error) co_return;
    }
}

// A plain connection moves to the shard of its couple, so that its frames cross no thread. One under TLS stays.
template <class Stream>
void HttpConnection<Stream>::handOver(BeastRequest request, ServerRequest plain, std::string coupleId) {
    UpgradeRequest upgrade{std::move(request), std::move(coupleId), std::move(plain.token), plain.client};
    if constexpr (std::is_same_v<Stream, TcpSocket>) {
        auto& owner = shard().shardOf(upgrade.coupleId);
        if (&owner != &shard()) {
            error_code error;
            const auto protocol = stream_.local_endpoint(error).protocol();
            const auto handle = stream_.release(error);
            if (error) return;
            // The descriptor has an owner from here on, even when the other shard never runs again.
            TcpSocket moved{owner.context(), protocol, handle};
            return asio::post(owner.executor(),
                              [&owner, moved = std::move(moved), upgrade = std::move(upgrade)]() mutable {
                                  openRoomSocket(owner, std::move(moved), std::move(upgrade));
                              });
        }
    }
    openRoomSocket(shard(), std::move(stream_), std::move(upgrade));
}

template <class Stream>
ServerRequest HttpConnection<Stream>::plainRequest(const BeastRequest& request) const {
    const auto target = request.target();
    const auto question = target.find('?');
    ServerRequest plain{.method = request.method_string(),
                        .path = target.substr(0, question),
                        .query = question == std::string_view::npos ? "" : std::string{target.substr(question + 1)},
                        .token = std::string{bearerToken(request[http::field::authorization])},
                        .body = {},
                        .client = peer_};
    const auto& proxies = shard().shared().config.trustedProxies;
    if (proxies.empty()) return plain;
    std::string forwardedFor; // each proxy appends to the header, or adds one of its own
    const auto [first, last] = request.equal_range("X-Forwarded-For");
    for (auto field = first; field != last; ++field) {
        forwardedFor.append(forwardedFor.empty() ? "" : ",").append(field->value());
    }
    plain.client = clientAddress(peer_, forwardedFor, proxies);
    return plain;
}

// A page of another site may make a browser open a socket; browsers tell where the page is from.
template <class Stream>
bool HttpConnection<Stream>::isFromElsewhere(const BeastRequest& request) const {
    const auto field = request.find(http::field::origin);
    if (field == request.end()) return false;
    const auto origin = Url::parse(field->value());
    return !origin || origin->origin() != shard().shared().publicOrigin;
}

template <class Stream>
std::optional<std::string> HttpConnection<Stream>::coupleOfUpgrade(const BeastRequest& request,
                                                                   const ServerRequest& plain) const {
    if (!beast::websocket::is_upgrade(request)) return std::nullopt;
    auto routing = routeOf(plain.method, plain.path);
    auto* const match = std::get_if<RouteMatch>(&routing);
    return match != nullptr && match->route == Route::roomSocket ? std::optional{std::move(match->id)} : std::nullopt;
}

template <class Stream>
void serve(Shard& shard, Stream stream, const IpAddress& peer) {
    using Kind = HttpConnection<Stream>;
    asio::co_spawn(shard.executor(), Kind::serve(std::make_unique<Kind>(shard, std::move(stream), peer)),
                   shard.noteEnd());
}

} // namespace

void serveConnection(Shard& shard, TcpSocket socket, asio::ssl::context* tls) {
    ++shard.figures().accepted;
    error_code error;
    const auto endpoint = socket.remote_endpoint(error);
    const auto peer = error ? std::nullopt : IpAddress::parse(endpoint.address().to_string());
    if (!peer) return; // gone already
    socket.set_option(Tcp::no_delay{true}, error);
    if (tls == nullptr) return serve(shard, std::move(socket), *peer);
    serve(shard, std::make_unique<TlsSocket>(std::move(socket), *tls), *peer);
}

} // namespace lumaro
