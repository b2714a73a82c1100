// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/SimApp.h"

#include "LumaroCore/BoardLogic/Expiry.h"
#include "Tests/Simulation/Fingers.h"
#include "Tests/Simulation/Hands.h"

#include <algorithm>
#include <array>
#include <utility>

namespace lumaro::simulation {
namespace {

using samples::chance;
using samples::pick;

constexpr Coordinates alfama{38.7139427, -9.1394113};
const std::array towns{alfama, Coordinates{52.5163174, 13.3777251}, Coordinates{-16.5000333, 179.9999871},
                       Coordinates{0, 0}, Coordinates{89.9999, 12.3456}};
const ChosenPlace byHand{"Berlin", "DE", "Europe/Berlin", 52.52437, 13.41053};

/// Within this a note whose time is over is taken down.
constexpr std::chrono::seconds expiryGrace{4};

bool takesDownExpired(const OutboxBatch& batch, const Board& board, Instant now) {
    return std::ranges::any_of(batch.ops, [&](const Op& op) {
        const auto* deletion = std::get_if<Delete>(&op.value);
        const auto* item = deletion == nullptr ? nullptr : board.find(deletion->itemId);
        return item != nullptr && item->hasExpired(now);
    });
}

} // namespace

struct SimApp::NoWallpaper final : WallpaperController {
    void setEnabled(bool /*enabled*/) override {}
};

/// Stands for a background thread: does its work a little later, one piece after the other, and none of it once the
/// process was killed.
class SimApp::Background final : public BackgroundRunner {
public:
    explicit Background(ManualSleeper& time) : time_(time) {}

    [[nodiscard]] std::unique_ptr<Task> run(std::move_only_function<void()> work,
                                            std::move_only_function<void()> then) override {
        auto task = jobs_.run(std::move(work), std::move(then));
        if (!next_) later();
        return task;
    }
    void finish() { jobs_.runAll(); }

private:
    void later() {
        next_ = time_.wait(Seconds{0.001}, [this] {
            next_.reset();
            jobs_.runNext();
            if (jobs_.waiting() > 0 && !next_) later();
        });
    }

    ManualSleeper& time_;
    ManualBackground jobs_;
    std::unique_ptr<Sleeper::Wait> next_;
};

/// A line that tells the program when it is opened and dropped.
class SimApp::Line final : public DirectRoomLink {
public:
    Line(SimApp& app, Address address, DurableOutbox outbox, SyncClient::Ports ports)
        : DirectRoomLink(std::move(address), std::move(outbox), app.device_.configuration(), ports, app), app_(app) {
        app.line_ = this;
    }
    ~Line() override {
        app_.line_ = nullptr;
        app_.isOpened_ = false;
    }

private:
    SimApp& app_;
};

SimApp::SimApp(SimDevice& device)
    : device_(device), transport_(device.parts().network, device.index()),
      http_(device.parts().time, device.parts().network, device.parts().server, device.index()),
      wallpaper_(std::make_unique<NoWallpaper>()), background_(std::make_unique<Background>(device.parts().time)),
      app_(
          std::make_unique<AppModel>(AppModel::Setup{.profile = "/home", .version = "1", .defaultServerURL = serverURL},
                                     AppModel::Ports{.sleeper = device.parts().time,
                                                     .clock = device.clock(),
                                                     .log = silence_,
                                                     .ids = device.ids(),
                                                     .files = device.disk(),
                                                     .http = http_,
                                                     .background = *background_,
                                                     .secretBackground = *background_,
                                                     .rooms = *this,
                                                     .keyring = device.keyring(),
                                                     .secretFile = noFile_,
                                                     .defaults = device.defaults(),
                                                     .notifications = notifications_,
                                                     .loginItem = loginItem_,
                                                     .contacts = contacts_,
                                                     .sounds = sounds_,
                                                     .signals = signals_,
                                                     .origin = origin_,
                                                     .players = players_.players(),
                                                     .coverMaker = coverMaker_,
                                                     .cityPainter = city_,
                                                     .cityMaker = city_,
                                                     .positions = positions_,
                                                     .geocoder = geocoder_,
                                                     .zone = zone_,
                                                     .homeRoom = homeRoom_,
                                                     .nearby = nearby_,
                                                     .wallpaper = *wallpaper_})) {
    truth_ = {LocationAccess::authorized, alfama};
    positions_.answerBy(device.parts().time);
    positions_.truth = [this] { return truth_; };
    app_->start();
}

SimApp::~SimApp() = default;

void SimApp::quit() {
    app_->shutdown();
    background_->finish();
}

SyncClient* SimApp::client() {
    return line_ == nullptr ? nullptr : &line_->client();
}

PartnerID SimApp::slot() const {
    return app_->state().token ? app_->state().token->slot : PartnerID::a;
}

bool SimApp::knows(const Members& members) const {
    const auto& state = app_->state();
    const auto isKnown = [&](PartnerID person) {
        const auto& name = members.names.of(person);
        const auto known = state.partnerNames.find(person);
        return !name || (known != state.partnerNames.end() && known->second == *name);
    };
    return state.presence.isPartnerOnline == members.paired().contains(other(slot())) && isKnown(PartnerID::a) &&
           isKnown(PartnerID::b);
}

// What people do

bool SimApp::actAtOnce(std::vector<Op> ops) {
    const Board before = app_->board();
    const auto waiting = app_->liveBoard().shared().pending().size();
    const auto done = app_->liveBoard().act(std::move(ops));
    if (!done && (app_->board() != before || app_->liveBoard().shared().pending().size() != waiting)) {
        device_.complain("refuses an act and does a part of it");
    }
    return done.has_value();
}

// The application refuses an act as a whole when the shown board would refuse a part of it. The ops are then tried one
// by one.
void SimApp::act(std::vector<Op> ops) {
    auto& coverage = device_.parts().coverage;
    const bool isLong = ops.size() > BoardSpec::maxOpsPerBatch;
    if (actAtOnce(ops)) {
        if (isLong) coverage.note(Met::actsInManyBatches);
        return;
    }
    coverage.note(Met::actsRefused);
    for (auto& op : ops) static_cast<void>(actAtOnce({std::move(op)}));
}

void SimApp::handle(samples::Random& random) {
    if (chance(random, 0.3)) {
        return act(Hands{app_->board(), {slot(), device_.clock().now()}, device_.ids(), random}.anyAct());
    }
    auto& editor = app_->editor();
    const bool wasGone = editor.inHand().draft() && editor.inHand().draft()->isGone();
    Fingers{editor, app_->board(), random}.play();
    if (wasGone && !editor.inHand().draft()) device_.parts().coverage.note(Met::draftsLetGo);
}

// Checks that taking back changes or takes down nothing that the partner wrote last.
void SimApp::takeBack(samples::Random& random) {
    auto& coverage = device_.parts().coverage;
    auto& editor = app_->editor();
    // What is being typed goes out before, as an act of its own.
    static_cast<void>(editor.inHand().endEditing());
    for (int i = pick(random, 1, 6); i > 0; --i) {
        const Board before = app_->board();
        const auto done = chance(random, 0.6) ? editor.undo() : editor.redo();
        if (done) coverage.note(Met::actsTakenBack);
        if (!done && done.error() == EditorFault{UndoFault::changedSince}) coverage.note(Met::undosRefused);
        if (!done && app_->board().items != before.items) device_.complain("refuses an undo and does a part of it");
        for (const auto& item : before.items) {
            const auto* now = app_->board().find(item.id);
            if (item.author == slot() || (now != nullptr && *now == item)) continue;
            device_.complain("takes back what its partner wrote last");
        }
    }
}

// Players answer a little later, as they do over a bus.
void SimApp::changeMusic(samples::Random& random) {
    players_.answerWithin(device_.parts().time, Seconds{0.02});
    const int choice = pick(random, 0, 9);
    if (choice < 3) return app_->music().share(choice > 0);
    if (choice == 3) {
        song_.reset();
        return players_.quit(MusicSource::appleMusic);
    }
    song_ = "song " + std::to_string(pick(random, 1, 9));
    const bool isPaused = chance(random, 0.3);
    players_.play(MusicSource::appleMusic,
                  FakePlayers::playing(*song_, "Nina", 215, pick(random, 0, 200), isPaused ? "paused" : "playing"));
}

std::optional<std::string> SimApp::partnersSong() const {
    const auto& playing = app_->state().presence.nowPlaying;
    return playing ? std::optional{playing->title} : std::nullopt;
}

void SimApp::changePlace(samples::Random& random) {
    auto& place = app_->place();
    switch (pick(random, 0, 9)) {
    case 0: return place.share(false);
    case 1:
    case 2: return place.share(true);
    case 3: truth_ = {LocationAccess::authorized, towns.at(pick(random, std::size_t{0}, towns.size() - 1))}; return;
    case 4:
        if (truth_.position) truth_.position->latitude -= pick(random, 0, 400) / 111'195.0;
        return;
    case 5: truth_ = {chance(random, 0.5) ? LocationAccess::denied : LocationAccess::restricted, std::nullopt}; return;
    case 6: return place.choose(chance(random, 0.5) ? std::optional{byHand} : std::nullopt);
    case 7: return place.setPrecision(chance(random, 0.5) ? HerePrecision::block : HerePrecision::neighbourhood);
    case 8:
        if (app_->state().ownPresence.here) place.rename(chance(random, 0.5) ? "Home" : "");
        return;
    default: zone_.zone = chance(random, 0.5) ? "Europe/Lisbon" : "Pacific/Fiji"; http_.turnWeather(random);
    }
}

std::string SimApp::faultOfPlace() const {
    const auto& state = app_->state();
    const auto& here = state.ownPresence.here;
    const bool isKnown = state.token && (state.chosenPlace || truth_.position);
    if (state.placeConsent != Consent::yes || !isKnown) return here ? "tells of a place that it should keep" : "";
    if (!here) return "does not tell where it is";
    const auto at = state.chosenPlace ? state.chosenPlace->position() : *truth_.position;
    constexpr double stayAndCell = 150 + 800;
    if (metresBetween(at, {here->lat, here->lon}) > stayAndCell) return "tells of a place where it is not";
    if (Coordinates{here->lat, here->lon} != rounded({here->lat, here->lon}, decimalsOf(state.precision)))
        return "tells its position too exactly";
    if (here->tz != zone_.zone) return "tells another zone than its computer's";
    return {};
}

// Its line

std::expected<std::unique_ptr<RoomLink>, std::string> SimApp::open(Address address, RoomLink::Listener& listener) {
    auto outbox = device_.openOutbox();
    if (!outbox) return std::unexpected(outbox.error().message);
    listener_ = &listener;
    return std::make_unique<Line>(*this, std::move(address), std::move(*outbox),
                                  SyncClient::Ports{.transport = transport_,
                                                    .http = http_,
                                                    .sleeper = device_.parts().time,
                                                    .clock = device_.clock(),
                                                    .log = silence_});
}

void SimApp::opened(std::vector<PendingBatch> waiting) {
    listener_->opened(std::move(waiting));
    isOpened_ = true;
}

// What comes in ends nothing that is in the hand.
void SimApp::received(const ServerMessage& message, std::size_t pending) {
    const auto& editor = app_->editor();
    const auto held = editor.inHand().draft() ? std::optional{editor.inHand().draft()->id()} : std::nullopt;
    const bool wasGone = held && editor.inHand().draft()->isGone();
    listener_->received(message, pending);
    device_.heard(message, app_->liveBoard().shared().confirmed());
    if (!held) return;
    if (!editor.inHand().draft() || editor.inHand().draft()->id() != *held)
        return device_.complain("loses what is in the hand");
    if (!wasGone && editor.inHand().draft()->isGone()) device_.parts().coverage.note(Met::draftsTakenDown);
}

void SimApp::stateChanged(const ConnectionState& state) {
    listener_->stateChanged(state);
    device_.lineChanged(state);
}

void SimApp::stored(const UUID& batchId, SendOutcome::Way way, std::size_t pending) {
    const auto& waiting = line_->client().pending();
    const auto batch = std::ranges::find(waiting, batchId, &OutboxBatch::batchId);
    if (batch == waiting.end()) return device_.complain("says that a batch is stored, and it is not");
    device_.stored(*batch);
    auto& coverage = device_.parts().coverage;
    if (way == SendOutcome::Way::queued) coverage.note(Met::actsQueued);
    if (takesDownExpired(*batch, app_->liveBoard().shared().confirmed(), device_.clock().now()))
        coverage.note(Met::notesExpired);
    listener_->stored(batchId, way, pending);
}

void SimApp::notStored(const UUID& batchId, const SendError& why) {
    device_.parts().coverage.note(Met::actsRefusedByDisk);
    listener_->notStored(batchId, why);
}

// What must be

void SimApp::check() {
    if (isOpened_) device_.checkShown(app_->liveBoard().shared());
}

void SimApp::checkAtRest() {
    if (!BoardLogic::expiryOps(app_->board(), device_.clock().now() - expiryGrace).empty()) {
        device_.complain("shows a note whose time is over");
    }
    if (!app_->state().unstoredBatches.empty()) device_.complain("thinks that an act is not stored yet");
}

} // namespace lumaro::simulation
