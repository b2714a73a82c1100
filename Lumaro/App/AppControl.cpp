// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/App/AppControl.h"

#include "Lumaro/Model/AppStatus.h"
#include "LumaroControl/BoardText.h"
#include "LumaroControl/JoinText.h"
#include "LumaroControl/Listening.h"
#include "LumaroControl/Whereabouts.h"
#include "LumaroCore/Places/ChosenTown.h"
#include "LumaroCore/Presence/Playback.h"
#include "LumaroCore/Support/Fatal.h"
#include "LumaroCore/Support/OneLine.h"
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Unicode.h"
#include "LumaroCore/Support/Wire.h"
#include "Platform/Posix/SystemClock.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

constexpr std::string_view serverWhileOnABoard = "a board cannot be moved to another server yet: `leave` it first";
constexpr std::string_view emptyName = "a name cannot be empty";

BoardAnswer refusal(ExitStatus status, std::string_view line) {
    return {std::to_underlying(status), "", onOneLine(line) + "\n"};
}

std::function<std::optional<BoardAnswer>()> atOnce(BoardAnswer answer) {
    return [answer = std::move(answer)] { return answer; };
}

ExitStatus statusOf(const EditorFault& fault) {
    const auto* const act = std::get_if<ActFault>(&fault);
    if (act == nullptr) return ExitStatus::data;
    switch (*act) {
    case ActFault::notOnBoard: return ExitStatus::refused;
    case ActFault::notStored: return ExitStatus::inOut;
    case ActFault::windowFull:
    case ActFault::tooLarge:
    case ActFault::outOfDate:
    case ActFault::invalid: return ExitStatus::data;
    }
    std::unreachable();
}

BoardAnswer refusalOf(const EditorFault& fault) {
    return refusal(statusOf(fault), textOf(fault));
}

SlotNames namesOf(const AppState& state) {
    SlotNames names;
    for (const auto& [person, name] : state.partnerNames) names.of(person) = name;
    return names;
}

std::string boardJson(const Board& board) {
    auto text = Wire::encode(board);
    if (!text) fatal("a board that is shown cannot be written");
    return std::move(*text) + "\n";
}

/// The largest one whose name begins so, in that country if one is said.
std::optional<Place> townNamed(const PlaceTable& places, std::string_view name, std::string_view country) {
    for (const auto& town : places.find(name, PlaceTable::mostFound)) {
        if (country.empty() || town.country == country) return town;
    }
    return std::nullopt;
}

void send(LocalSocketServer::Reply reply, const BoardAnswer& answer) {
    const auto text = Wire::encode(answer);
    reply(text ? *text : R"({"status":65,"out":"","err":"the answer is not UTF-8\n"})");
}

} // namespace

std::expected<std::unique_ptr<AppControl>, std::string>
AppControl::listen(const std::string& path, AppModel& app, const PlaceTable& places, std::function<void()> openBoard) {
    std::unique_ptr<AppControl> control{new AppControl{app, places, std::move(openBoard)}};
    auto* const raw = control.get();
    auto server = LocalSocketServer::listen(
        path, [raw](const std::string& line, LocalSocketServer::Reply reply) { raw->take(line, std::move(reply)); });
    if (!server) return std::unexpected(std::move(server.error()));
    control->server_ = std::move(*server);
    return control;
}

void AppControl::take(const std::string& line, LocalSocketServer::Reply reply) {
    const auto request = Wire::decode<BoardRequest>(line);
    if (!request) {
        send(std::move(reply), refusal(ExitStatus::data, request.error().path + ": " + request.error().message));
    } else if (waiting_.size() + deferred_.size() >= maxWaiting) {
        send(std::move(reply), refusal(ExitStatus::busy, "too many requests wait for an answer already"));
    } else if (mustWait(*request)) {
        deferred_.push_back({*request, std::move(reply)});
    } else {
        start(*request, std::move(reply));
        answerReady();
    }
}

// Until the session is restored there may be a board to come, and until its outbox is read the board does not show what
// waits there: what was asked before a restart would be done twice.
bool AppControl::mustWait(const BoardRequest& request) const {
    const bool isPairing = std::holds_alternative<BoardRequest::Join>(request.verb.value);
    const bool isEdit = std::visit([]<class Verb>(const Verb&) { return EditRequest<Verb>; }, request.verb.value);
    const auto& state = app_.state();
    return ((isEdit || isPairing) && state.isRestoring) || (isEdit && state.isOpening);
}

void AppControl::start(const BoardRequest& request, LocalSocketServer::Reply reply) {
    auto outcome = begin(request);
    waiting_.push_back({std::move(outcome), std::move(reply)});
}

// Answers come last: what they lead to must find the lists at rest. So must what an act of one that was put off tells.
void AppControl::answerReady() {
    for (auto& one : std::exchange(deferred_, {})) {
        if (mustWait(one.request)) {
            deferred_.push_back(std::move(one));
        } else {
            start(one.request, std::move(one.reply));
        }
    }
    std::vector<std::pair<LocalSocketServer::Reply, BoardAnswer>> ready;
    std::erase_if(waiting_, [&](Waiting& one) {
        auto answer = one.outcome();
        if (answer) ready.emplace_back(std::move(one.reply), std::move(*answer));
        return answer.has_value();
    });
    for (auto& [reply, answer] : ready) send(std::move(reply), answer);
}

AppControl::Outcome AppControl::begin(const BoardRequest& request) {
    return std::visit([this](const auto& verb) { return answer(verb); }, request.verb.value);
}

// The board.

AppControl::Outcome AppControl::answer(const BoardRequest::Undo&) {
    return takenBack(editor().undo());
}

AppControl::Outcome AppControl::answer(const BoardRequest::Redo&) {
    return takenBack(editor().redo());
}

AppControl::Outcome AppControl::answer(const BoardRequest::Show& show) {
    return atOnce({0, show.json ? boardJson(app_.board()) : boardText(app_.board(), namesOf(app_.state())), ""});
}

AppControl::Outcome AppControl::answer(const BoardRequest::Pending&) {
    return atOnce({0, std::to_string(app_.state().pendingBatches) + "\n", ""});
}

AppControl::Outcome AppControl::answer(const BoardRequest::Status&) {
    return atOnce({0, statusJson(app_.state()) + "\n", ""});
}

// Who is on it.

AppControl::Outcome AppControl::answer(const BoardRequest::Start& start) {
    if (trimmed(start.name).empty()) return atOnce(refusal(ExitStatus::usage, emptyName));
    app_.pairing().startOurBoard(start.name);
    return paired();
}

AppControl::Outcome AppControl::answer(const BoardRequest::Join& join) {
    if (trimmed(join.name).empty()) return atOnce(refusal(ExitStatus::usage, emptyName));
    if (const auto fault = faultOfCodeOrLink(join.codeOrLink)) return atOnce(refusal(ExitStatus::usage, *fault));
    const bool mayLeave = join.leave.value_or(false);
    const auto ownBoard = mayLeave ? OwnBoard::left : OwnBoard::stays;
    if (app_.state().token && !mayLeave) return atOnce(refusal(ExitStatus::refused, joinWhileOnABoard));
    if (join.slot && std::holds_alternative<PairingPhase::Choosing>(app_.state().pairing.value)) {
        app_.pairing().chooseOneself(*join.slot);
    } else if (inviteIdIn(join.codeOrLink)) {
        app_.pairing().joinByLink(join.codeOrLink, {ownBoard, join.name});
    } else {
        app_.pairing().joinByCode(join.codeOrLink, {ownBoard, join.name});
    }
    return paired();
}

AppControl::Outcome AppControl::answer(const BoardRequest::Code&) {
    if (!app_.state().token) return atOnce(refusalOf(ActFault::notOnBoard));
    // One that is on its way answers both.
    if (!app_.state().isMintingCode) app_.invitations().mintCode();
    return [this]() -> std::optional<BoardAnswer> {
        const auto& state = app_.state();
        if (!state.token) return refusalOf(ActFault::notOnBoard);
        if (state.isMintingCode) return std::nullopt;
        if (state.codeFailure) return refusal(ExitStatus::unavailable, *state.codeFailure);
        if (!state.shareCode) return refusalOf(ActFault::notOnBoard);
        return BoardAnswer{0, state.shareCode->code + "\n", ""};
    };
}

AppControl::Outcome AppControl::answer(const BoardRequest::Link&) {
    if (!app_.state().token) return atOnce(refusalOf(ActFault::notOnBoard));
    if (!app_.state().boardLink) app_.invitations().mintLink();
    return [this, coupleId = app_.state().token->coupleId]() -> std::optional<BoardAnswer> {
        const auto& state = app_.state();
        // With another board the call for this one's link has ended.
        if (!state.token || state.token->coupleId != coupleId) return refusalOf(ActFault::notOnBoard);
        if (state.boardLink) return BoardAnswer{0, state.boardLink->url + "\n", ""};
        if (state.linkFailure) return refusal(ExitStatus::unavailable, *state.linkFailure);
        return std::nullopt;
    };
}

AppControl::Outcome AppControl::answer(const BoardRequest::Leave&) {
    app_.leaveBoard();
    return atOnce({});
}

AppControl::Outcome AppControl::answer(const BoardRequest::Secrets& secrets) {
    app_.keepSecretsInFile(secrets.inFile);
    return paired();
}

AppControl::Outcome AppControl::answer(const BoardRequest::UnlockKeyring&) {
    app_.retryKeychain();
    return atOnce({});
}

AppControl::Outcome AppControl::answer(const BoardRequest::QuickNote& note) {
    app_.requestQuickNote(note.text);
    return atOnce({});
}

AppControl::Outcome AppControl::answer(const BoardRequest::Open& open) {
    if (!openBoard_) return atOnce(refusal(ExitStatus::unavailable, "this one runs without windows"));
    if (open.link) app_.pairing().joinByLink(*open.link);
    openBoard_();
    return atOnce({});
}

AppControl::Outcome AppControl::answer(const BoardRequest::Presence& seen) {
    app_.presence().setActivity(seen.activity);
    return atOnce({});
}

AppControl::Outcome AppControl::answer(const BoardRequest::Listening& listening) {
    if (listening.share) app_.music().share(*listening.share);
    const auto& state = app_.state();
    const auto partner = other(state.token ? state.token->slot : PartnerID::a);
    Listening heard{state.musicConsent == Consent::yes, state.ownPresence.nowPlaying, state.presence.nowPlaying};
    if (heard.partner && Playback::hasEnded(*heard.partner, state.presence.nowPlayingHeardAt, SystemClock{}.now())) {
        heard.partner.reset();
    }
    return atOnce(
        {0, listening.json ? listeningJson(heard) : listeningText(heard, nameOfSlot(namesOf(state), partner)), ""});
}

AppControl::Outcome AppControl::answer(const BoardRequest::Place& place) {
    auto& sharing = app_.place();
    if (place.town && place.town->empty()) sharing.choose(std::nullopt);
    if (place.town && !place.town->empty()) {
        const auto town = townNamed(places_, *place.town, place.country.value_or(""));
        if (!town) return atOnce(refusal(ExitStatus::data, "there is no town \"" + *place.town + "\" here"));
        sharing.choose(chosenPlace(*town));
    }
    if (place.precision) sharing.setPrecision(*place.precision);
    if (place.share) sharing.share(*place.share);
    if (place.hours) app_.hours().share(*place.hours);
    const auto& state = app_.state();
    if (place.name) {
        if (!state.ownPresence.here) return atOnce(refusal(ExitStatus::refused, "it is not known where you are"));
        sharing.rename(*place.name);
    }
    const auto partner = other(state.token ? state.token->slot : PartnerID::a);
    const Whereabouts known{.shares = state.placeConsent == Consent::yes,
                            .access = state.locationAccess,
                            .precision = state.precision,
                            .chosen = state.chosenPlace,
                            .own = state.ownPresence.here,
                            .partner = state.presence.here,
                            .zone = state.ownPresence.zone,
                            .partnerZone = state.presence.zone};
    return atOnce(
        {0, place.json ? whereaboutsJson(known) : whereaboutsText(known, nameOfSlot(namesOf(state), partner)), ""});
}

AppControl::Outcome AppControl::answer(const BoardRequest::Server& server) {
    auto& home = app_.home();
    if (server.address && app_.state().token) return atOnce(refusal(ExitStatus::refused, serverWhileOnABoard));
    if (server.address) home.checkAndUse(*server.address);
    if (server.here) *server.here ? home.keepHere() : home.stopKeeping();
    return [this, isNew = server.address.has_value()]() -> std::optional<BoardAnswer> {
        const auto& state = app_.state();
        if (const auto* const bad = std::get_if<AddressCheck::Bad>(&state.addressCheck.value);
            bad != nullptr && isNew) {
            return refusal(ExitStatus::unavailable, bad->message);
        }
        if (std::holds_alternative<KeptHere::Failed>(state.keptHere.value)) {
            return refusal(ExitStatus::unavailable, "the room does not run on this computer");
        }
        if (std::holds_alternative<KeptHere::Starting>(state.keptHere.value)) return std::nullopt;
        if (isNew && std::holds_alternative<AddressCheck::Asking>(state.addressCheck.value)) return std::nullopt;
        const auto* const kept = std::get_if<KeptHere::Kept>(&state.keptHere.value);
        auto out = state.serverURL.empty() ? "no server is set" : state.serverURL;
        if (kept != nullptr) {
            out += "\nkept here: http://" + kept->running.host + ":" + std::to_string(kept->running.port);
        }
        return BoardAnswer{0, out + "\n", ""};
    };
}

// What answers have in common.

AppControl::Outcome AppControl::carriedOut(const AskedVerb& verb) {
    if (!app_.state().token) return atOnce(refusalOf(ActFault::notOnBoard));
    if (!verb) return atOnce(refusal(ExitStatus::data, verb.error()));
    const auto act = editor().carryOut(*verb);
    if (!act) return atOnce(refusalOf(act.error()));
    return stored(*act ? std::vector{**act} : batchesAlreadyDoing(*verb, app_.liveBoard().shared()), outputOf(*verb));
}

AppControl::Outcome AppControl::takenBack(const EditorAct& act) {
    if (!act) return atOnce(refusalOf(act.error()));
    return stored(*act ? std::vector{**act} : std::vector<UUID>{}, "");
}

AppControl::Outcome AppControl::stored(std::vector<UUID> batches, std::string out) {
    return [this, batches = std::move(batches), out = std::move(out)]() -> std::optional<BoardAnswer> {
        const auto& state = app_.state();
        const auto isUnstored = [&](const UUID& batch) { return state.unstoredBatches.contains(batch); };
        const auto hasFailed = [&](const UUID& batch) {
            return std::ranges::find(state.failedBatches, batch) != state.failedBatches.end();
        };
        if (std::ranges::any_of(batches, hasFailed)) return refusalOf(ActFault::notStored);
        if (std::ranges::any_of(batches, isUnstored)) return std::nullopt;
        return BoardAnswer{0, out, ""};
    };
}

AppControl::Outcome AppControl::paired() {
    return [this]() -> std::optional<BoardAnswer> {
        const auto& state = app_.state();
        if (state.secretPlace == SecretPlace::asking) {
            return refusal(ExitStatus::config, "no keyring keeps secrets here: `secrets --file` lets a file do it");
        }
        return std::visit(
            Overloaded{[&](const PairingPhase::Idle&) -> std::optional<BoardAnswer> {
                           if (!state.token || state.isSettling) return std::nullopt;
                           return BoardAnswer{0, state.boardLink ? state.boardLink->url + "\n" : "", ""};
                       },
                       [](const PairingPhase::Working&) -> std::optional<BoardAnswer> { return std::nullopt; },
                       [](const PairingPhase::Choosing&) -> std::optional<BoardAnswer> {
                           return refusal(ExitStatus::usage, "both people are on the board: say who you are with --as");
                       },
                       [](const PairingPhase::Asking&) -> std::optional<BoardAnswer> {
                           return refusal(ExitStatus::refused, "the application's window asks about that invite");
                       },
                       [](const PairingPhase::NeedsServer&) -> std::optional<BoardAnswer> {
                           return refusal(ExitStatus::usage, "no server is set: `server URL` sets one");
                       },
                       [](const PairingPhase::Failed& failed) -> std::optional<BoardAnswer> {
                           return refusal(ExitStatus::refused, failed.message);
                       }},
            state.pairing.value);
    };
}

} // namespace lumaro
