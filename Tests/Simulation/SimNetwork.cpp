// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/SimNetwork.h"

#include "LumaroCore/Support/Overloaded.h"

#include <algorithm>
#include <utility>

namespace lumaro::simulation {
namespace {

// The room closes a socket that says nothing for so long.
constexpr Seconds idleSpan{90};
// A device leaves a line that says nothing for so long.
constexpr Seconds silentSpan{60};

std::uint64_t scrambled(std::uint64_t value) {
    value ^= value >> 31;
    value *= 0x9e3779b97f4a7c15ULL;
    value ^= value >> 29;
    value *= 0xbf58476d1ce4e5b9ULL;
    return value ^ (value >> 32);
}

bool tellsDevice(Notice notice) {
    return notice == Notice::both || notice == Notice::device;
}

bool tellsServer(Notice notice) {
    return notice == Notice::both || notice == Notice::server;
}

} // namespace

class SimNetwork::Connection final : public WebSocketConnection {
public:
    Connection(SimNetwork& network, SocketId socket) : network_(network), socket_(socket) {}
    ~Connection() override { network_.letGo(socket_); }

    [[nodiscard]] bool send(std::string_view text) override { return network_.sendUp(socket_, text); }
    std::size_t bytesToWrite() const override {
        const auto* line = network_.find(socket_);
        return line == nullptr ? 0 : line->bytesUp;
    }

private:
    SimNetwork& network_;
    SocketId socket_;
};

SimNetwork::Line* SimNetwork::find(SocketId socket) {
    const auto found = lines_.find(socket);
    return found == lines_.end() ? nullptr : &found->second;
}

Seconds SimNetwork::delay(std::size_t device) {
    const auto& weather = weather_[device];
    const auto range = static_cast<std::uint64_t>(weather.slowestMs - weather.fastestMs) * 1000 + 1;
    const auto beyond = scrambled(seed_ + ++delays_) % range;
    return Seconds{weather.fastestMs / 1e3 + static_cast<double>(beyond) / 1e6};
}

// The device's side

std::unique_ptr<WebSocketConnection> SimNetwork::open(std::size_t device, const WebSocketRequest& request,
                                                      WebSocketListener& listener) {
    const SocketId socket{++made_};
    auto& line = lines_[socket];
    line.device = device;
    line.listener = &listener;
    line.patience =
        time_.wait(request.timeout, [this, socket] { endForDevice(socket, {WebSocketEnd::Failed{"time-out"}}); });
    switch (weather_[device].reach) {
    case Weather::Reach::open: push(socket, &Line::up, Asked{request}); break;
    case Weather::Reach::refusing:
        coverage_.note(Met::unreachable);
        push(socket, &Line::down, WebSocketEnd{WebSocketEnd::Failed{"no route"}});
        break;
    case Weather::Reach::silent: break;
    }
    return std::make_unique<Connection>(*this, socket);
}

bool SimNetwork::sendUp(SocketId socket, std::string_view text) {
    auto* line = find(socket);
    if (line == nullptr || line->listener == nullptr || !line->isOpen) return false;
    line->bytesUp += text.size();
    push(socket, &Line::up, std::make_shared<const std::string>(text));
    return true;
}

void SimNetwork::letGo(SocketId socket) {
    auto* line = find(socket);
    if (line == nullptr) return;
    // A device that leaves a line by itself, long after it last heard anything.
    const bool wasSilent = line->isOpen && line->listener != nullptr && Seconds{time_.now() - line->told} >= silentSpan;
    if (wasSilent) coverage_.note(Met::silenceNoticed);
    line->listener = nullptr;
    line->patience.reset();
    line->down.items.clear();
    line->down.next.reset();
    line->down.isCut = true;
    push(socket, &Line::up, Gone{});
    tidy(socket);
}

// The server's side

bool SimNetwork::accept(SocketId socket) {
    auto* line = find(socket);
    if (line == nullptr || !line->isServed) return false;
    line->heard = time_.now();
    push(socket, &Line::down, Opened{});
    watchIdle(socket, idleSpan);
    return true;
}

void SimNetwork::refuse(SocketId socket, int status) {
    if (auto* line = find(socket)) {
        line->isServed = false;
        push(socket, &Line::down, WebSocketEnd{WebSocketEnd::Refused{status}});
        tidy(socket);
    }
}

void SimNetwork::send(SocketId socket, SharedText text) {
    if (find(socket) != nullptr) push(socket, &Line::down, std::move(text));
}

void SimNetwork::close(SocketId socket, int code) {
    auto* line = find(socket);
    if (line == nullptr) return;
    push(socket, &Line::down, WebSocketEnd{WebSocketEnd::Closed{code}});
    line->down.isCut = true;
    push(socket, &Line::up, Gone{});
    line->up.isCut = true;
}

// On the way

void SimNetwork::push(SocketId socket, Way Line::* way, Carried carried) {
    auto& line = lines_.at(socket);
    auto& [items, next, isCut] = line.*way;
    if (isCut) return;
    const auto due = time_.now() + std::chrono::round<ManualSleeper::Time>(delay(line.device));
    items.push_back({items.empty() ? due : std::max(due, items.back().due), std::move(carried)});
    if (items.size() == 1) arm(socket, way);
    if (sabotage_ == Sabotage::framesOvertake && way == &Line::down) overtake(items);
}

// The planted fault: the newest frame goes before the one ahead of it.
void SimNetwork::overtake(std::deque<Item>& items) {
    if (items.size() < 3) return;
    auto& last = items[items.size() - 1].carried;
    auto& ahead = items[items.size() - 2].carried;
    if (std::holds_alternative<SharedText>(last) && std::holds_alternative<SharedText>(ahead)) std::swap(last, ahead);
}

void SimNetwork::arm(SocketId socket, Way Line::* way) {
    auto& line = lines_.at(socket);
    auto& [items, next, isCut] = line.*way;
    next = time_.wait(items.front().due - time_.now(), [this, socket, way] { deliver(socket, way); });
}

void SimNetwork::deliver(SocketId socket, Way Line::* way) {
    auto& [items, next, isCut] = lines_.at(socket).*way;
    auto carried = std::move(items.front().carried);
    items.pop_front();
    if (!items.empty()) arm(socket, way);
    if (way == &Line::up) {
        deliverUp(socket, std::move(carried));
    } else {
        deliverDown(socket, std::move(carried));
    }
    tidy(socket);
}

void SimNetwork::deliverUp(SocketId socket, Carried carried) {
    auto& line = lines_.at(socket);
    if (const auto* asked = std::get_if<Asked>(&carried)) {
        if (server_ == nullptr) {
            coverage_.note(Met::unreachable);
            push(socket, &Line::down, WebSocketEnd{WebSocketEnd::Failed{"connection refused"}});
            return;
        }
        line.isServed = true;
        server_->asked(socket, asked->request);
    } else if (const auto* text = std::get_if<SharedText>(&carried)) {
        line.bytesUp -= (*text)->size();
        line.heard = time_.now();
        trace_.add("frame up", std::to_underlying(socket), **text);
        if (line.isServed) server_->received(socket, **text);
        if (auto* still = find(socket); still != nullptr && still->listener != nullptr) still->listener->writable();
    } else {
        endForServer(socket);
    }
}

void SimNetwork::deliverDown(SocketId socket, Carried carried) {
    auto& line = lines_.at(socket);
    if (line.listener == nullptr) return;
    line.told = time_.now();
    std::visit(Overloaded{[&](Opened) {
                              line.isOpen = true;
                              line.patience.reset();
                              coverage_.note(Met::connections);
                              trace_.add("open", std::to_underlying(socket));
                              line.listener->opened();
                          },
                          [&](const SharedText& text) {
                              trace_.add("frame down", std::to_underlying(socket), *text);
                              line.listener->received(*text);
                          },
                          [&](WebSocketEnd& end) { endForDevice(socket, std::move(end)); }, [](const Asked&) {},
                          [](Gone) {}},
               carried);
}

void SimNetwork::endForDevice(SocketId socket, WebSocketEnd end) {
    auto* line = find(socket);
    if (line == nullptr || line->listener == nullptr) return;
    trace_.add("end for device", std::to_underlying(socket));
    line->isOpen = false;
    std::exchange(line->listener, nullptr)->ended(std::move(end));
}

void SimNetwork::endForServer(SocketId socket) {
    auto* line = find(socket);
    if (line == nullptr || !std::exchange(line->isServed, false)) return;
    trace_.add("end for server", std::to_underlying(socket));
    line->idle.reset();
    if (server_ != nullptr) server_->ended(socket);
}

void SimNetwork::watchIdle(SocketId socket, Seconds span) {
    auto& line = lines_.at(socket);
    line.idle = time_.wait(span, [this, socket] {
        auto& watched = lines_.at(socket);
        const Seconds quiet = time_.now() - watched.heard;
        if (quiet < idleSpan) {
            watchIdle(socket, idleSpan - quiet);
            return;
        }
        coverage_.note(Met::idleSocketsClosed);
        close(socket, 1001);
        endForServer(socket);
        tidy(socket);
    });
}

void SimNetwork::tidy(SocketId socket) {
    const auto* line = find(socket);
    if (line == nullptr || line->listener != nullptr || line->isServed) return;
    const bool isAsking = !line->up.items.empty() && std::holds_alternative<Asked>(line->up.items.front().carried);
    if (!isAsking) lines_.erase(socket);
}

// Faults

void SimNetwork::dropTail(Way& way, samples::Random& random) {
    const auto arriving = samples::pick(random, std::size_t{0}, way.items.size());
    coverage_.note(Met::framesLost, way.items.size() - arriving);
    way.items.resize(arriving);
    if (arriving == 0) way.next.reset();
}

void SimNetwork::cutLine(SocketId socket, Line& line, Notice notice, samples::Random& random) {
    coverage_.note(notice == Notice::both ? Met::cuts : Met::halfOpenLines);
    trace_.add("cut", std::to_underlying(socket));
    const bool isClean = samples::chance(random, 0.5);
    dropTail(line.up, random);
    dropTail(line.down, random);
    if (tellsServer(notice)) push(socket, &Line::up, Gone{});
    if (tellsDevice(notice)) {
        auto end = isClean ? WebSocketEnd{WebSocketEnd::Closed{}} : WebSocketEnd{WebSocketEnd::Failed{"reset"}};
        push(socket, &Line::down, std::move(end));
    }
    line.up.isCut = true;
    line.down.isCut = true;
}

void SimNetwork::cut(std::size_t device, Notice notice, samples::Random& random) {
    for (auto& [socket, line] : lines_) {
        const bool isAlive = line.listener != nullptr && !line.up.isCut;
        if (line.device == device && isAlive) cutLine(socket, line, notice, random);
    }
}

void SimNetwork::cutAll(Notice notice, samples::Random& random) {
    std::vector<SocketId> all;
    for (auto& [socket, line] : lines_) {
        if (line.listener != nullptr && !line.up.isCut) cutLine(socket, line, notice, random);
        line.isServed = false;
        line.idle.reset();
        all.push_back(socket);
    }
    for (const auto socket : all) tidy(socket);
}

void SimNetwork::abandon(std::size_t device) {
    for (auto& [socket, line] : lines_) {
        if (line.device != device) continue;
        if (line.listener != nullptr) coverage_.note(Met::halfOpenLines);
        line.up.isCut = true;
    }
}

bool SimNetwork::hasUnnoticedCut() const {
    return std::ranges::any_of(lines_, [](const auto& entry) {
        const auto& line = entry.second;
        return line.listener != nullptr && (line.down.isCut || line.patience != nullptr);
    });
}

} // namespace lumaro::simulation
