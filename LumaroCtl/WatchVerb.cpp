// SPDX-License-Identifier: Apache-2.0
#include "LumaroControl/BoardText.h"
#include "LumaroControl/Moments.h"
#include "LumaroCore/Support/Fatal.h"
#include "LumaroCore/Support/JsonWriter.h"
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Wire.h"
#include "LumaroCtl/NetworkVerbs.h"

#include <ostream>
#include <utility>

namespace lumaro {
namespace {

// Tells what a session hears: a line for each thing, at once.
class Watcher : public BoardSession::Listener {
public:
    Watcher(std::ostream& out, QtLoop& loop) : out_(out), loop_(loop) {}

    /// The board as it is known before the room is heard of.
    virtual void began(const BoardSession& session) = 0;
    bool isRefused() const { return isRefused_; }

protected:
    void line(std::string_view text) {
        out_ << text << '\n' << std::flush;
        // Nobody reads any more.
        if (!out_) loop_.quit();
    }
    void mark(const ConnectionState& state) {
        if (!std::holds_alternative<ConnectionState::Rejected>(state.value)) return;
        isRefused_ = true;
        loop_.quit();
    }

private:
    std::ostream& out_;
    QtLoop& loop_;
    bool isRefused_ = false;
};

class JsonWatcher final : public Watcher {
public:
    using Watcher::Watcher;

    void began(const BoardSession& session) override { tell("board", session.board().shown()); }
    void received(const ServerMessage& message) override { tell("message", message); }
    void boardChanged(const Board& /*before*/, const Board& after) override { tell("board", after); }
    void stateChanged(const ConnectionState& state) override {
        std::string text = R"({"event":"state","state":")" + nameOfState(state) + '"';
        if (const auto* waiting = std::get_if<ConnectionState::Waiting>(&state.value)) {
            text += R"(,"attempt":)" + std::to_string(waiting->attempt) + R"(,"delay":)" + numberText(waiting->delay);
        }
        line(text + "}");
        mark(state);
    }

private:
    template <class T>
    void tell(const std::string& what, const T& value) {
        std::string text = R"({"event":")" + what + R"(",")" + what + "\":";
        if (!Wire::encodeTo(text, value, 1)) fatal("what was read cannot be written");
        line(text + "}");
    }

    static std::string numberText(Seconds delay) {
        std::string text;
        JsonWriter writer{text};
        writer.number(delay.count());
        if (!writer.finish()) fatal("a delay is no number");
        return text;
    }

    static std::string nameOfState(const ConnectionState& state) {
        using Text = std::string;
        return std::visit(Overloaded{[](const ConnectionState::Idle&) { return Text{"idle"}; },
                                     [](const ConnectionState::Connecting&) { return Text{"connecting"}; },
                                     [](const ConnectionState::Connected&) { return Text{"connected"}; },
                                     [](const ConnectionState::Waiting&) { return Text{"waiting"}; },
                                     [](const ConnectionState::Stopped&) { return Text{"stopped"}; },
                                     [](const ConnectionState::Rejected&) { return Text{"rejected"}; }},
                          state.value);
    }
};

class LineWatcher final : public Watcher {
public:
    LineWatcher(std::ostream& out, QtLoop& loop, WallClock& clock) : Watcher(out, loop), clock_(clock) {}

    void began(const BoardSession& session) override {
        session_ = &session;
        stamped(std::to_string(session.board().shown().items.size()) + " items when last seen");
    }
    void received(const ServerMessage& message) override {
        if (const auto text = messageText(message, session_->names())) stamped(*text);
    }
    void boardChanged(const Board& before, const Board& after) override {
        for (const auto& text : changeLines(before, after, session_->names())) stamped(text);
    }
    void stateChanged(const ConnectionState& state) override {
        stamped(stateText(state));
        mark(state);
    }

private:
    void stamped(std::string_view text) { line(timeOfDayText(clock_.now()) + "  " + std::string{text}); }

    WallClock& clock_;
    const BoardSession* session_ = nullptr;
};

ExitStatus watch(Network& network, Streams streams, Watcher& watcher) {
    auto profile = network.openPairedProfile();
    if (!profile) return fail(streams, "watch", profile.error());
    auto server = network.serverFor(*profile);
    if (!server) return fail(streams, "watch", server.error());
    auto lock = network.takeLock(*profile);
    if (!lock) return fail(streams, "watch", lock.error());
    network.loop.onTermination([&network] { network.loop.quit(); });
    auto owner =
        ProfileOwner::take(std::move(*profile), std::move(*lock), std::move(*server), network.ports(), &watcher);
    if (!owner) return fail(streams, "watch", owner.error());
    watcher.began((*owner)->session());
    (*owner)->session().client().connect();
    network.loop.run();
    if (!watcher.isRefused()) return ExitStatus::ok;
    return fail(streams, ExitStatus::refused,
                " watch: " + LumaroCoreError{LumaroCoreError::Unauthorized{}}.errorDescription());
}

} // namespace

ExitStatus runWatch(const NetworkOptions& options, Streams streams, bool json) {
    Network network{options};
    if (json) {
        JsonWatcher watcher{streams.out, network.loop};
        return watch(network, streams, watcher);
    }
    LineWatcher watcher{streams.out, network.loop, network.clock};
    return watch(network, streams, watcher);
}

} // namespace lumaro
