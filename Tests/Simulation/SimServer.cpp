// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/SimServer.h"

#include "LumaroCore/Protocol/CoupleToken.h"
#include "LumaroCore/Support/Wire.h"
#include "LumaroRoom/Pairing/Secrets.h"

#include <algorithm>
#include <utility>

namespace lumaro::simulation {
namespace {

constexpr Seconds tickSpan{1};

std::optional<CoupleToken> tokenIn(const std::vector<HttpHeader>& headers) {
    static constexpr std::string_view scheme = "Bearer ";
    const auto header = std::ranges::find(headers, "authorization", &HttpHeader::name);
    if (header == headers.end() || !header->value.starts_with(scheme)) return std::nullopt;
    auto token = CoupleToken::parse(header->value.substr(scheme.size()));
    return token ? std::optional{std::move(*token)} : std::nullopt;
}

} // namespace

SimServer::Process::Process(SimServer& server)
    : queue(server.parts_.store, server.parts_.time, server.parts_.sabotage, server.parts_.trace,
            server.parts_.coverage),
      host(queue, server, server.clock_, server.log_), pairing("https://board.example", server.parts_.random, {}) {
}

SimServer::~SimServer() {
    takeFigures();
}

void SimServer::start() {
    if (process_) return;
    parts_.trace.add("server starts", 0);
    process_ = std::make_unique<Process>(*this);
    parts_.network.listen(this);
    tickLater();
}

void SimServer::tickLater() {
    process_->tick = parts_.time.wait(tickSpan, [this] {
        process_->host.tick();
        tickLater();
    });
}

void SimServer::takeFigures() {
    if (!process_) return;
    const auto figures = process_->host.figures();
    parts_.coverage.note(Met::duplicates, figures.duplicates);
    parts_.coverage.note(Met::rejectedOps, figures.rejectedOps);
    parts_.coverage.note(Met::reloads, figures.reloads);
}

void SimServer::kill(Notice notice, samples::Random& random) {
    if (!process_) return;
    parts_.trace.add("server dies", 0);
    takeFigures();
    parts_.network.listen(nullptr);
    parts_.network.cutAll(notice, random);
    process_.reset();
}

void SimServer::killAt(KillPoint point, Notice notice, std::uint64_t salt) {
    if (!process_) return;
    process_->queue.killAt(point, [this, point, notice, salt] {
        switch (point) {
        case KillPoint::none: break;
        case KillPoint::beforeCommit: parts_.coverage.note(Met::serverKillsBeforeCommit); break;
        case KillPoint::afterCommit: parts_.coverage.note(Met::serverKillsAfterCommit); break;
        case KillPoint::amidReports: parts_.coverage.note(Met::serverKillsAmidAcks); break;
        }
        samples::Random random{salt};
        kill(notice, random);
    });
}

void SimServer::refreshMembers(const std::string& coupleId) {
    if (process_) process_->host.refreshMembers(coupleId);
}

void SimServer::submit(StoreQueue::Work work) {
    if (process_) process_->queue.submit(std::move(work), [](const StoreResult<void>&) {});
}

void SimServer::snapshot(const HttpRequest& request, std::function<void(HttpClient::Answer)> then) {
    const auto token = tokenIn(request.headers);
    if (!process_ || !token) return then(std::unexpected(HttpFailure{"no answer"}));
    auto answer = std::make_shared<HttpResponse>(HttpResponse{.status = 401, .body = {}});
    auto work = [answer, couple = token->coupleId, hash = sha256(token->raw)](Store& store) -> StoreResult<void> {
        const auto room = store.loadRoom(couple);
        if (!room) return std::unexpected(room.error());
        if (!*room || (*room)->members.findToken(hash) == nullptr) return {};
        *answer = {.status = 200, .body = Wire::encode((*room)->board).value()};
        return {};
    };
    process_->queue.submit(std::move(work), [answer, then](const StoreResult<void>& done) {
        then(done ? HttpClient::Answer{std::move(*answer)} : std::unexpected(HttpFailure{"the store failed"}));
    });
}

// What the host says

void SimServer::send(SocketId socket, SharedText text) {
    parts_.witness.roomSays(*text);
    if (parts_.sabotage == Sabotage::acksAreLost && text->find(R"("type":"ack")") < 20) return;
    parts_.network.send(socket, std::move(text));
}

void SimServer::close(SocketId socket, int code, std::string_view /*reason*/) {
    parts_.network.close(socket, code);
}

void SimServer::resume(SocketId socket) {
    // Never from within this call: the host is at work.
    process_->resuming[socket] = parts_.time.wait(Seconds{0}, [this, socket] { readOn(socket); });
}

// What comes over the lines

void SimServer::asked(SocketId socket, const WebSocketRequest& request) {
    const auto token = tokenIn(request.headers);
    if (!token) return parts_.network.refuse(socket, 401);
    const auto hash = sha256(token->raw);
    process_->host.authorize(
        token->coupleId, hash, [this, socket, hash, couple = token->coupleId](StoreResult<bool> ok) {
            if (!ok) return parts_.network.refuse(socket, 503);
            if (!*ok) return parts_.network.refuse(socket, std::to_underlying(socket) % 2 == 0 ? 0 : 401);
            if (parts_.network.accept(socket)) process_->host.joined(socket, couple, hash);
        });
}

void SimServer::received(SocketId socket, std::string_view frame) {
    process_->unread[socket].emplace_back(frame);
    readOn(socket);
}

void SimServer::readOn(SocketId socket) {
    auto& unread = process_->unread[socket];
    while (!unread.empty() && process_->host.wantsMore(socket)) {
        const auto frame = std::move(unread.front());
        unread.pop_front();
        process_->host.received(socket, frame);
    }
}

void SimServer::ended(SocketId socket) {
    process_->unread.erase(socket);
    process_->resuming.erase(socket);
    process_->host.left(socket);
}

} // namespace lumaro::simulation
