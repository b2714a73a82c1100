// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppModel.h"
#include "Lumaro/Offline/QuietServices.h"
#include "LumaroCore/BoardLogic/Edits.h"
#include "LumaroCore/NoteRender/PMNode.h"
#include "Tests/Fakes/CountingUUIDs.h"
#include "Tests/Fakes/FakeDesktop.h"
#include "Tests/Fakes/FakeHomeRoom.h"
#include "Tests/Fakes/FakeNotifications.h"
#include "Tests/Fakes/FakePlaces.h"
#include "Tests/Fakes/FakePlayers.h"
#include "Tests/Fakes/ManualBackground.h"
#include "Tests/Fakes/ManualClock.h"
#include "Tests/Fakes/ManualSleeper.h"
#include "Tests/Fakes/MemoryDefaults.h"
#include "Tests/Fakes/MemoryFileSystem.h"
#include "Tests/Fakes/MemorySecretStore.h"
#include "Tests/Fakes/RecordingLog.h"
#include "Tests/Fakes/ScriptedHttpClient.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lumaro {

/// A room that says what the test says. At most one line at a time.
class FakeRooms final : public RoomLinks {
public:
    struct Sent {
        UUID batchId;
        std::vector<Op> ops;
    };

    std::expected<std::unique_ptr<RoomLink>, std::string> open(Address address, RoomLink::Listener& to) override {
        if (refusal) return std::unexpected(*refusal);
        addresses.push_back(std::move(address));
        listener = &to;
        return std::make_unique<Link>(*this);
    }

    void say(ServerMessage::Value message) { listener->received({std::move(message)}, sent.size()); }

    std::vector<Address> addresses;
    std::vector<Sent> sent;
    std::vector<OwnPresence> presences;
    std::optional<std::string> refusal;
    RoomLink::Listener* listener = nullptr; ///< null while there is no line
    int retries = 0;
    bool stores = true; ///< else the disk is full
    bool holds = false; ///< what becomes of a batch is for the test to say

private:
    class Link final : public RoomLink {
    public:
        explicit Link(FakeRooms& rooms) : rooms_(rooms) {}
        ~Link() override { rooms_.listener = nullptr; }

        void send(const UUID& batchId, std::vector<Op> ops) override {
            if (!rooms_.stores) return rooms_.listener->notStored(batchId, FileError{FileFault::noSpace, "", ""});
            rooms_.sent.push_back({batchId, std::move(ops)});
            if (rooms_.holds) return;
            rooms_.listener->stored(batchId, SendOutcome::Way::transmitted, rooms_.sent.size());
        }
        void sendPresence(OwnPresence presence) override { rooms_.presences.push_back(std::move(presence)); }
        void holdMedia(const UUID&) override {}
        void releaseMedia(const UUID&) override {}
        void retryNow() override { ++rooms_.retries; }

    private:
        FakeRooms& rooms_;
    };
};

class CountingWallpaper final : public WallpaperController {
public:
    void setEnabled(bool enabled) override { calls.push_back(enabled ? "on" : "off"); }

    std::vector<std::string> calls;
};

/// One device's application with everything around it in the test's hands.
struct AppFixture {
    static constexpr std::string_view token = "lm1.q3m7xk2p.a.nbswy3dpo5xxe3de";

    /// Of a build with a server, unless that is empty.
    explicit AppFixture(std::string server = "https://board.example") : builtIn(std::move(server)) { rebuild(); }

    /// The program ends and is started again; what outlives it stays.
    void rebuild() {
        app.reset();
        background.runAll();
        app = std::make_unique<AppModel>(
            AppModel::Setup{.profile = "/profile", .version = "1", .defaultServerURL = builtIn}, ports());
        background.runAll();
    }
    void start() {
        app->start();
        background.runAll();
    }
    /// On the board of `token`, with the room's empty board.
    void goOnBoard() {
        keyring.items[{std::string{keychainService}, "joinToken"}] = token;
        defaults.setString("pairedCoupleId", "q3m7xk2p");
        start();
        rooms.listener->opened({});
        ServerMessage::Welcome welcome;
        welcome.roster = PartnerSet::both();
        welcome.names = SlotNames{"Ann", "Ben"};
        rooms.say(std::move(welcome));
    }
    void pass(Seconds span) {
        sleeper.advance(span);
        background.runAll();
    }
    bool hasLogged(std::string_view line) const {
        return std::ranges::any_of(log.lines, [&](const auto& logged) { return logged == line; });
    }
    std::vector<Op> noteOps(std::string_view text, PartnerID author, std::optional<Instant> expiresAt = std::nullopt) {
        return *Edits::putUp(app->board(), ids.next(), NotePayload{pm::docOfLines(text), "butter", "brass", expiresAt},
                             std::nullopt, {author, clock.now()});
    }
    /// Ops that take effect in the room, by the partner unless said otherwise.
    void relay(std::vector<Op> ops, PartnerID author = PartnerID::b) {
        rooms.say(ServerMessage::Ops{ids.next(), author, std::move(ops)});
    }
    const AppState& state() const { return app->state(); }
    AppModel::Ports ports() {
        return {.sleeper = sleeper,
                .clock = clock,
                .log = log,
                .ids = ids,
                .files = files,
                .http = http,
                .background = background,
                .secretBackground = background,
                .rooms = rooms,
                .keyring = keyring,
                .secretFile = secretFile,
                .defaults = defaults,
                .notifications = notifications,
                .loginItem = loginItem,
                .contacts = contacts,
                .sounds = sounds,
                .signals = signals,
                .origin = origin,
                .players = players.players(),
                .coverMaker = coverMaker,
                .cityPainter = city,
                .cityMaker = city,
                .positions = positions,
                .geocoder = geocoder,
                .zone = zone,
                .homeRoom = homeRoom,
                .nearby = nearby,
                .wallpaper = wallpaper};
    }

    std::string builtIn; ///< the server of the build
    ManualSleeper sleeper;
    ManualClock clock{sleeper, Instant{std::chrono::seconds{1'790'000'000}}};
    RecordingLog log;
    CountingUUIDs ids{1000};
    MemoryFileSystem files;
    ScriptedHttpClient http;
    ManualBackground background;
    FakeRooms rooms;
    MemoryKeyring keyring;
    MemorySecretStore secretFile;
    MemoryDefaults defaults;
    FakeNotifications notifications;
    FakeLoginItem loginItem;
    FakeContactCard contacts;
    RecordingSounds sounds;
    ManualSystemSignals signals;
    FakeDownloadOrigin origin;
    FakePlayers players;
    FakeCoverMaker coverMaker;
    QuietCity city;
    FakePositions positions;
    FakeGeocoder geocoder;
    FakeZone zone;
    FakeHomeRoom homeRoom;
    FakeRoomsNearby nearby;
    CountingWallpaper wallpaper;
    std::unique_ptr<AppModel> app;
};

} // namespace lumaro
