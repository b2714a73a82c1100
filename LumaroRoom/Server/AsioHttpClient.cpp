// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/AsioHttpClient.h"

#include "LumaroRoom/Server/Asio.h"
#include "LumaroRoom/Server/BeastHttp.h"
#include "LumaroRoom/Server/Url.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/connect.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/host_name_verification.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace lumaro {
namespace {

constexpr std::size_t maxAnswerBytes = std::size_t{1024} * 1024;
// What was read and is not taken up yet: the headers, the head of a chunk with its extension, the trailer.
constexpr std::size_t maxBufferBytes = std::size_t{64} * 1024;

HttpClient::Answer failed(std::string_view where, error_code error) {
    return std::unexpected(HttpFailure{std::string{where} + ": " + error.message()});
}

// A request and its connection, held by the coroutine and by whoever waits for the answer.
struct Exchange {
    Exchange(asio::io_context& context, asio::ssl::context& tls)
        : socket(TcpSocket{context}, tls), resolver(context), deadline(context) {}

    void cancel() {
        isCancelled = true;
        error_code ignored;
        resolver.cancel();
        deadline.cancel();
        socket.next_layer().close(ignored);
    }

    TlsSocket socket; // its lower layer alone for plain HTTP
    TcpResolver resolver;
    SteadyTimer deadline;
    Url url;
    BeastRequest request;
    std::size_t maxBodyBytes = maxAnswerBytes;
    std::move_only_function<void(HttpClient::Answer)> then;
    bool isCancelled = false;
};

class ExchangeCall final : public HttpClient::Call {
public:
    explicit ExchangeCall(std::shared_ptr<Exchange> exchange) : exchange_(std::move(exchange)) {}
    ~ExchangeCall() override { exchange_->cancel(); }

private:
    std::shared_ptr<Exchange> exchange_;
};

template <class Stream>
Awaitable<HttpClient::Answer> ask(Stream& stream, const Exchange& exchange) {
    const auto [unsent, sent] = co_await http::async_write(stream, exchange.request, asTuple);
    if (unsent) co_return failed("sending", unsent);
    beast::flat_buffer buffer{maxBufferBytes};
    http::response_parser<http::string_body> parser;
    parser.body_limit(exchange.maxBodyBytes);
    const auto [unread, size] = co_await http::async_read(stream, buffer, parser, asTuple);
    if (unread) co_return failed("receiving", unread);
    co_return HttpResponse{static_cast<int>(parser.get().result_int()), std::move(parser.get().body())};
}

Awaitable<HttpClient::Answer> perform(std::shared_ptr<Exchange> exchange) {
    const auto& url = exchange->url;
    const auto [unknown, places] =
        co_await exchange->resolver.async_resolve(url.host, std::to_string(url.port), asTuple);
    if (unknown) co_return failed("resolving", unknown);
    const auto [unreachable, place] = co_await asio::async_connect(exchange->socket.next_layer(), places, asTuple);
    if (unreachable) co_return failed("connecting", unreachable);
    if (!url.isSecure) co_return co_await ask(exchange->socket.next_layer(), *exchange);

    exchange->socket.set_verify_mode(asio::ssl::verify_peer);
    exchange->socket.set_verify_callback(asio::ssl::host_name_verification{url.host});
    if (::SSL_set_tlsext_host_name(exchange->socket.native_handle(), url.host.c_str()) != 1) {
        co_return std::unexpected(HttpFailure{"the host's name cannot be sent"});
    }
    const auto [untrusted] = co_await exchange->socket.async_handshake(asio::ssl::stream_base::client, asTuple);
    if (untrusted) co_return failed("shaking hands", untrusted);
    co_return co_await ask(exchange->socket, *exchange);
}

Awaitable<void> run(std::shared_ptr<Exchange> exchange) {
    auto answer = co_await perform(exchange);
    exchange->deadline.cancel();
    if (!exchange->isCancelled) std::exchange(exchange->then, nullptr)(std::move(answer));
}

Awaitable<void> cutAfter(std::shared_ptr<Exchange> exchange) {
    const auto [error] = co_await exchange->deadline.async_wait(asTuple);
    if (error) co_return;
    error_code ignored;
    exchange->resolver.cancel();
    exchange->socket.next_layer().close(ignored);
}

} // namespace

struct AsioHttpClient::State {
    asio::io_context& context;
    asio::ssl::context tls{asio::ssl::context::tls_client};
};

AsioHttpClient::AsioHttpClient(asio::io_context& context) : state_(new State{.context = context}) {
    error_code ignored; // without the system's certificates no handshake succeeds, and says so
    state_->tls.set_default_verify_paths(ignored);
}

AsioHttpClient::~AsioHttpClient() = default;

std::unique_ptr<HttpClient::Call> AsioHttpClient::send(HttpRequest request,
                                                       std::move_only_function<void(Answer)> then) {
    auto exchange = std::make_shared<Exchange>(state_->context, state_->tls);
    exchange->then = std::move(then);
    exchange->maxBodyBytes = std::min(request.maxBodyBytes, maxAnswerBytes);
    auto url = Url::parse(request.url);
    if (!url) {
        asio::post(state_->context, [exchange] {
            if (!exchange->isCancelled) exchange->then(std::unexpected(HttpFailure{"this is no URL"}));
        });
        return std::make_unique<ExchangeCall>(std::move(exchange));
    }
    exchange->url = std::move(*url);
    constexpr unsigned version = 11;
    exchange->request = BeastRequest{http::string_to_verb(request.method), exchange->url.target, version};
    exchange->request.set(http::field::host, exchange->url.authority());
    for (const auto& header : request.headers) exchange->request.set(header.name, header.value);
    exchange->request.keep_alive(false);
    exchange->request.body() = std::move(request.body);
    exchange->request.prepare_payload();
    exchange->deadline.expires_after(std::chrono::duration_cast<SteadyClock::duration>(request.timeout));
    asio::co_spawn(state_->context, run(exchange), asio::detached);
    asio::co_spawn(state_->context, cutAfter(exchange), asio::detached);
    return std::make_unique<ExchangeCall>(std::move(exchange));
}

} // namespace lumaro
