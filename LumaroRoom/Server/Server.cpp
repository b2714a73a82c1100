// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/Server.h"

#include "LumaroRoom/Server/AsioHttpClient.h"
#include "LumaroRoom/Server/HttpConnection.h"
#include "LumaroRoom/Server/Shard.h"
#include "LumaroRoom/Server/Url.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/ssl/context.hpp>

#include <algorithm>
#include <chrono>
#include <future>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

using namespace std::chrono_literals;

constexpr int waitingConnections = 4096;
// When the process has all the descriptors it may, it waits for some to come free.
constexpr auto acceptPause = 100ms;

std::expected<std::unique_ptr<asio::ssl::context>, std::string> tlsContext(const ServerConfig::Tls& files) {
    auto tls = std::make_unique<asio::ssl::context>(asio::ssl::context::tls_server);
    error_code error;
    ::SSL_CTX_set_min_proto_version(tls->native_handle(), TLS1_2_VERSION);
    ::SSL_CTX_set_mode(tls->native_handle(), SSL_MODE_RELEASE_BUFFERS);
    tls->use_certificate_chain_file(files.certificatePath, error);
    if (error) return std::unexpected("no certificate in " + files.certificatePath + ": " + error.message());
    tls->use_private_key_file(files.keyPath, asio::ssl::context::pem, error);
    if (error) return std::unexpected("no key for the certificate in " + files.keyPath + ": " + error.message());
    return tls;
}

} // namespace

struct Server::Parts {
    Parts(ServerConfig given, std::unique_ptr<TransactionalStore> stored, const Ports& from)
        : config(std::move(given)), ports(from), store(std::move(stored)), quota(config.limits.socketsPerOrigin) {}

    std::optional<std::string> listen();
    void makeShards();
    void run();
    Awaitable<void> accept();
    bool mayConnect(const TcpSocket& socket) const;
    void stop();

    ServerConfig config;
    Ports ports;
    std::string url;
    std::string publicOrigin;
    StoreThread store;
    SocketQuota quota;
    std::unique_ptr<asio::ssl::context> tls;
    asio::io_context accepting{1};
    TcpAcceptor acceptor{accepting};
    std::optional<PairingService> pairing;
    Shard::Shards shards;
    std::optional<AsioHttpClient> http;
    std::optional<WeatherService> weather;
    std::vector<std::thread> threads;
    bool isStopped = false;
};

// What went wrong, if anything did.
std::optional<std::string> Server::Parts::listen() {
    if (config.tls) {
        auto context = tlsContext(*config.tls);
        if (!context) return std::move(context.error());
        tls = std::move(*context);
    }
    error_code error;
    const auto address = asio::ip::make_address(config.address, error);
    if (error) return "\"" + config.address + "\" is no address to listen on";
    const Tcp::endpoint endpoint{address, config.port};
    acceptor.open(endpoint.protocol(), error);
    if (!error) acceptor.set_option(Tcp::acceptor::reuse_address{true}, error);
    if (!error) acceptor.bind(endpoint, error);
    if (!error) acceptor.listen(waitingConnections, error);
    const auto bound = error ? Tcp::endpoint{} : acceptor.local_endpoint(error);
    if (error) {
        return "cannot listen on " + config.address + " port " + std::to_string(config.port) + ": " + error.message();
    }
    config.port = bound.port();
    const auto host = address.is_v6() ? "[" + address.to_string() + "]" : address.to_string();
    url = (tls ? "https://" : "http://") + host + ":" + std::to_string(config.port);
    if (config.publicURL.empty()) config.publicURL = url;
    const auto parsed = Url::parse(config.publicURL);
    if (!parsed) return "\"" + config.publicURL + "\" is no http or https URL";
    publicOrigin = parsed->origin();
    return std::nullopt;
}

void Server::Parts::makeShards() {
    pairing.emplace(config.publicURL, ports.random, PairingService::Limits{});
    const Shard::Shared shared{.config = config,
                               .publicOrigin = publicOrigin,
                               .pairing = *pairing,
                               .store = store,
                               .quota = quota,
                               .clock = ports.clock,
                               .log = ports.log};
    for (std::size_t index = 0; index < config.threads; ++index) {
        shards.push_back(std::make_unique<Shard>(index, shards, shared));
    }
    http.emplace(shards.front()->context());
    weather.emplace(config.weatherUpstream, config.limits.weatherAge, *http, ports.clock, ports.log);
    shards.front()->provideWeather(*weather);
}

void Server::Parts::run() {
    for (const auto& shard : shards) {
        threads.emplace_back([&shard = *shard] { shard.run(); });
    }
    asio::co_spawn(accepting, accept(), asio::detached);
    threads.emplace_back([this] { accepting.run(); });
    ports.log.write(LogLevel::info, "server", "listening on " + url);
}

bool Server::Parts::mayConnect(const TcpSocket& socket) const {
    if (config.onlyFrom.empty()) return true;
    error_code error;
    const auto endpoint = socket.remote_endpoint(error);
    const auto peer = error ? std::nullopt : IpAddress::parse(endpoint.address().to_string());
    return peer && std::ranges::any_of(config.onlyFrom, [&](const IpRange& range) { return range.contains(*peer); });
}

// Connections go to the shards in turn. Those that open a room's socket go on to the shard of their couple.
Awaitable<void> Server::Parts::accept() {
    SteadyTimer pause{accepting};
    for (std::size_t next = 0;; next = (next + 1) % shards.size()) {
        auto& shard = *shards[next];
        TcpSocket socket{shard.context()};
        const auto [error] = co_await acceptor.async_accept(socket, asTuple);
        if (!acceptor.is_open()) co_return;
        if (error) {
            ports.log.write(LogLevel::error, "server", "a connection was not accepted: " + error.message());
            pause.expires_after(acceptPause);
            co_await pause.async_wait(asTuple);
            continue;
        }
        if (!mayConnect(socket)) continue;
        asio::post(shard.executor(), [&shard, socket = std::move(socket), tls = tls.get()]() mutable {
            serveConnection(shard, std::move(socket), tls);
        });
    }
}

void Server::Parts::stop() {
    if (std::exchange(isStopped, true) || threads.empty()) return;
    ports.log.write(LogLevel::info, "server", "draining");
    std::promise<void> closed;
    asio::post(accepting, [this, &closed] {
        error_code ignored;
        acceptor.close(ignored);
        closed.set_value();
    });
    closed.get_future().wait();
    std::vector<std::future<void>> drained;
    for (const auto& shard : shards) {
        const auto done = std::make_shared<std::promise<void>>();
        drained.push_back(done->get_future());
        shard->drain([done] { done->set_value(); });
    }
    // Twice the time for a goodbye: a request that waits for its answer gets its own first.
    const auto latest = SteadyClock::now() + 2 * config.limits.closingTime;
    for (const auto& done : drained) done.wait_until(latest);
    store.stop();
    for (const auto& shard : shards) shard->stop();
    accepting.stop();
    for (auto& thread : threads) thread.join();
    ports.log.write(LogLevel::info, "server", "stopped");
}

std::expected<std::unique_ptr<Server>, std::string>
Server::start(ServerConfig config, std::unique_ptr<TransactionalStore> store, Ports ports) {
    auto parts = std::make_unique<Parts>(std::move(config), std::move(store), ports);
    if (auto fault = parts->listen()) return std::unexpected(std::move(*fault));
    parts->makeShards();
    parts->run();
    return std::unique_ptr<Server>{new Server{std::move(parts)}};
}

Server::Server(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {
}

Server::~Server() {
    stop();
}

std::uint16_t Server::port() const {
    return parts_->config.port;
}

std::string Server::url() const {
    return parts_->url;
}

void Server::stop() {
    parts_->stop();
}

} // namespace lumaro
