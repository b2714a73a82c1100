// SPDX-License-Identifier: Apache-2.0
#include "LumaroCtl/ProfileOwner.h"

#include "LumaroCore/Support/Wire.h"

#include <utility>

namespace lumaro {
namespace {

constexpr std::string_view category = "profile";
// How old the board on disk may be.
constexpr Seconds savingInterval{1};

std::string written(const BoardAnswer& answer) {
    auto text = Wire::encode(answer);
    return text ? *text : R"({"status":65,"out":"","err":"the answer is not UTF-8\n"})";
}

} // namespace

Profile::Result<std::unique_ptr<ProfileOwner>> ProfileOwner::take(Profile profile, FolderLock lock, std::string server,
                                                                  NetworkPorts ports, BoardSession::Listener* watcher) {
    const auto& token = *profile.token();
    auto board = profile.lastKnownBoard(token.coupleId);
    if (!board) return std::unexpected(std::move(board.error()));
    auto outbox = DurableOutbox::open(ports.files, ports.ids, profile.outboxPath(token.coupleId));
    if (!outbox) return std::unexpected(failureOf(outbox.error()));
    BoardSession::Setup setup{.serverURL = std::move(server),
                              .token = token,
                              .deviceId = profile.facts().deviceId,
                              .outbox = std::move(*outbox),
                              .lastKnown = std::move(*board),
                              .configuration = {}};
    std::unique_ptr<ProfileOwner> owner{
        new ProfileOwner{std::move(profile), std::move(lock), std::move(setup), ports, watcher}};
    owner->serve();
    return owner;
}

ProfileOwner::ProfileOwner(Profile profile, FolderLock lock, BoardSession::Setup setup, NetworkPorts ports,
                           BoardSession::Listener* watcher)
    : lock_(std::move(lock)), profile_(std::move(profile)), ports_(ports), watcher_(watcher),
      session_(std::move(setup), {ports.transport, ports.http, ports.sleeper, ports.clock, ports.log}, ports.ids,
               *this),
      commands_(session_, ports.clock, ports.sleeper), saved_(session_.board().confirmed()) {
}

ProfileOwner::~ProfileOwner() {
    server_.reset();
    saveBoard();
}

void ProfileOwner::serve() {
    auto server = LocalSocketServer::listen(
        profile_.socketPath(),
        [this](const std::string& line, LocalSocketServer::Reply reply) { answer(line, std::move(reply)); });
    if (server) {
        server_ = std::move(*server);
    } else {
        // The lock alone keeps others out; they are told that the profile is in use.
        ports_.log.write(LogLevel::error, category, "no socket for other processes: " + server.error());
    }
}

void ProfileOwner::answer(const std::string& line, LocalSocketServer::Reply reply) {
    auto request = Wire::decode<BoardRequest>(line);
    if (!request) {
        reply(written({std::to_underlying(ExitStatus::data), "", "another version of this program has the profile\n"}));
        return;
    }
    commands_.execute(std::move(*request),
                      [reply = std::move(reply)](const BoardAnswer& answer) mutable { reply(written(answer)); });
}

void ProfileOwner::saveBoard() {
    saving_.reset();
    const auto& board = session_.board().confirmed();
    if (board == saved_) return;
    if (auto saved = profile_.saveBoard(profile_.token()->coupleId, board); !saved) {
        ports_.log.write(LogLevel::error, category, saved.error().message);
        return;
    }
    saved_ = board;
}

void ProfileOwner::received(const ServerMessage& message) {
    if (!saving_) saving_ = ports_.sleeper.wait(savingInterval, [this] { saveBoard(); });
    commands_.received(message);
    if (watcher_ != nullptr) watcher_->received(message);
}

void ProfileOwner::boardChanged(const Board& before, const Board& after) {
    if (watcher_ != nullptr) watcher_->boardChanged(before, after);
}

void ProfileOwner::stateChanged(const ConnectionState& state) {
    commands_.stateChanged(state);
    if (watcher_ != nullptr) watcher_->stateChanged(state);
}

} // namespace lumaro
