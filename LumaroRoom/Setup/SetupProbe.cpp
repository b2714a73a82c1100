// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Setup/SetupProbe.h"

#include "LumaroRoom/Server/Asio.h"
#include "LumaroRoom/Server/HttpDate.h"
#include "LumaroRoom/Server/IpAddress.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/connect.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace lumaro {
namespace {

namespace beast = boost::beast;
namespace http = boost::beast::http;
using namespace std::chrono_literals;
using SecureSocket = asio::ssl::stream<TcpSocket>;

constexpr auto stepPatience = 15s;
constexpr std::size_t largestAnswer = std::size_t{64} * 1024;

// Any key will do: no socket is opened.
constexpr std::string_view socketKey = "bHVtYXJvLXNldHVwLWtleQ==";

enum class Upgrade : std::uint8_t { no, yes };

CertificateFault::Kind kindOf(long verified) {
    switch (verified) {
    case X509_V_ERR_HOSTNAME_MISMATCH:
    case X509_V_ERR_IP_ADDRESS_MISMATCH: return CertificateFault::Kind::otherName;
    case X509_V_ERR_CERT_HAS_EXPIRED: return CertificateFault::Kind::expired;
    case X509_V_ERR_CERT_NOT_YET_VALID: return CertificateFault::Kind::notYet;
    default: return CertificateFault::Kind::unknownAuthority;
    }
}

// A new connection for each request: what one of them does to it tells nothing of the next.
class Visit {
public:
    explicit Visit(Url url) : url_(std::move(url)), resolver_(context_), socket_(context_, tls_) {
        error_code ignored; // without the system's certificates no handshake succeeds, and says so
        tls_.set_default_verify_paths(ignored);
    }

    std::expected<std::vector<std::string>, std::string> resolve();
    std::optional<std::string> connect();
    std::optional<CertificateFault> shakeHands();
    SetupSight::Answer ask(std::string_view path, Upgrade upgrade);

private:
    /// Runs a step to its end, or cuts it off.
    template <class T>
    T run(Awaitable<T> step, T late);

    bool isRightName();
    template <class Stream>
    Awaitable<SetupSight::Answer> exchange(Stream& stream, http::request<http::string_body> request);

    Url url_;
    asio::io_context context_{1};
    asio::ssl::context tls_{asio::ssl::context::tls_client};
    TcpResolver resolver_;
    TcpResolver::results_type places_;
    SecureSocket socket_; // its lower layer alone for plain HTTP
};

template <class T>
T Visit::run(Awaitable<T> step, T late) {
    std::optional<T> result;
    asio::co_spawn(
        context_,
        [](Awaitable<T> awaited, std::optional<T>& into) -> Awaitable<void> {
            into.emplace(co_await std::move(awaited));
        }(std::move(step), result),
        asio::detached);
    context_.restart();
    context_.run_for(stepPatience);
    if (result) return std::move(*result);
    error_code ignored;
    resolver_.cancel();
    socket_.next_layer().close(ignored);
    context_.restart();
    context_.run_for(1s); // the step hears that it was cut off, and lets go of what it holds
    return late;
}

std::expected<std::vector<std::string>, std::string> Visit::resolve() {
    using Found = std::expected<std::vector<std::string>, std::string>;
    auto step = [](Visit& self) -> Awaitable<Found> {
        auto [error, places] =
            co_await self.resolver_.async_resolve(self.url_.host, std::to_string(self.url_.port), asTuple);
        if (error) co_return std::unexpected(error.message());
        std::vector<std::string> addresses;
        for (const auto& place : places) addresses.push_back(place.endpoint().address().to_string());
        self.places_ = std::move(places);
        co_return addresses;
    };
    return run<Found>(step(*this), std::unexpected("no name server answered"));
}

std::optional<std::string> Visit::connect() {
    using Fault = std::optional<std::string>;
    auto step = [](Visit& self) -> Awaitable<Fault> {
        const auto [error, place] = co_await asio::async_connect(self.socket_.next_layer(), self.places_, asTuple);
        co_return error ? Fault{error.message()} : std::nullopt;
    };
    return run<Fault>(step(*this), "no answer in time");
}

// The name is looked at by the library in the same go, so that it says which of the two is wrong.
bool Visit::isRightName() {
    auto* const ssl = socket_.native_handle();
    if (IpAddress::parse(url_.host)) {
        return ::X509_VERIFY_PARAM_set1_ip_asc(::SSL_get0_param(ssl), url_.host.c_str()) == 1;
    }
    return ::SSL_set1_host(ssl, url_.host.c_str()) == 1 && ::SSL_set_tlsext_host_name(ssl, url_.host.c_str()) == 1;
}

std::optional<CertificateFault> Visit::shakeHands() {
    using Fault = std::optional<CertificateFault>;
    if (!isRightName()) return CertificateFault{CertificateFault::Kind::noTls, "the host's name cannot be sent"};
    error_code ignored;
    socket_.set_verify_mode(asio::ssl::verify_peer, ignored);
    auto step = [](Visit& self) -> Awaitable<Fault> {
        const auto [error] = co_await self.socket_.async_handshake(asio::ssl::stream_base::client, asTuple);
        if (!error) co_return std::nullopt;
        const long verified = ::SSL_get_verify_result(self.socket_.native_handle());
        if (verified == X509_V_OK) co_return CertificateFault{CertificateFault::Kind::noTls, error.message()};
        co_return CertificateFault{kindOf(verified), ::X509_verify_cert_error_string(verified)};
    };
    return run<Fault>(step(*this), CertificateFault{CertificateFault::Kind::noTls, "no answer in time"});
}

template <class Stream>
Awaitable<SetupSight::Answer> Visit::exchange(Stream& stream, http::request<http::string_body> request) {
    const auto [unsent, sent] = co_await http::async_write(stream, request, asTuple);
    if (unsent) co_return std::unexpected(unsent.message());
    beast::flat_buffer buffer{largestAnswer};
    http::response_parser<http::string_body> parser;
    parser.body_limit(largestAnswer);
    const auto [unread, size] = co_await http::async_read(stream, buffer, parser, asTuple);
    if (unread) co_return std::unexpected(unread.message());
    auto& response = parser.get();
    co_return SetupAnswer{.status = static_cast<int>(response.result_int()),
                          .body = std::move(response.body()),
                          .location = std::string{response[http::field::location]},
                          .date = parseHttpDate(response[http::field::date])};
}

SetupSight::Answer Visit::ask(std::string_view path, Upgrade upgrade) {
    auto base = url_.target.substr(0, url_.target.find('?'));
    while (base.ends_with('/')) base.pop_back();
    constexpr unsigned version = 11;
    http::request<http::string_body> request{http::verb::get, base.append(path), version};
    request.set(http::field::host, url_.authority());
    request.set(http::field::user_agent, "lumaro-room check-setup");
    if (upgrade == Upgrade::yes) {
        request.set(http::field::connection, "Upgrade");
        request.set(http::field::upgrade, "websocket");
        request.set(http::field::sec_websocket_version, "13");
        request.set(http::field::sec_websocket_key, socketKey);
    } else {
        request.keep_alive(false);
    }
    const SetupSight::Answer late = std::unexpected("no answer in time");
    if (url_.isSecure) return run<SetupSight::Answer>(exchange(socket_, std::move(request)), late);
    return run<SetupSight::Answer>(exchange(socket_.next_layer(), std::move(request)), late);
}

SetupSight::Answer askAnew(const Url& url, std::string_view path, Upgrade upgrade) {
    Visit visit{url};
    if (auto found = visit.resolve(); !found) return std::unexpected(std::move(found.error()));
    if (auto fault = visit.connect()) return std::unexpected(std::move(*fault));
    if (url.isSecure) {
        if (auto fault = visit.shakeHands()) return std::unexpected(std::move(fault->words));
    }
    return visit.ask(path, upgrade);
}

} // namespace

SetupSight lookAt(const Url& asked, WallClock& clock) {
    const std::unexpected<std::string> unasked{"not asked"};
    SetupSight sight{.asked = asked,
                     .addresses = unasked,
                     .unreachable = {},
                     .untrusted = {},
                     .plain = unasked,
                     .upgraded = unasked,
                     .page = unasked,
                     .health = unasked,
                     .now = {}};
    Visit visit{asked};
    sight.addresses = visit.resolve();
    if (!sight.addresses) return sight;
    sight.unreachable = visit.connect();
    if (sight.unreachable) return sight;
    if (asked.isSecure) sight.untrusted = visit.shakeHands();
    if (sight.untrusted) return sight;
    sight.plain = visit.ask(setupSocketPath, Upgrade::no);
    sight.now = clock.now();
    if (!sight.plain) return sight;
    sight.upgraded = askAnew(asked, setupSocketPath, Upgrade::yes);
    sight.page = askAnew(asked, setupPagePath, Upgrade::no);
    sight.health = askAnew(asked, "/healthz", Upgrade::no);
    return sight;
}

} // namespace lumaro
