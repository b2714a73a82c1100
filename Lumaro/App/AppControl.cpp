// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/App/AppControl.h"

#include "Lumaro/Model/AppStatus.h"
#include "LumaroControl/BoardText.h"
#include "LumaroCore/Support/Fatal.h"
#include "LumaroCore/Support/OneLine.h"
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Wire.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

BoardAnswer refusal(ExitStatus status, std::string_view line) {
    return {std::to_underlying(status), "", onOneLine(line) + "\n"};
}

std::function<std::optional<BoardAnswer>()> atOnce(BoardAnswer answer) {
    return [answer = std::move(answer)] { return answer; };
}

std::vector<UUID> beginningWith(const Board& board, const std::string& prefix) {
    std::vector<UUID> found;
    for (const auto& item : board.items) {
        if (item.id.lowerString().starts_with(prefix)) found.push_back(item.id);
    }
    return found;
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

} // namespace

std::expected<std::unique_ptr<AppControl>, std::string> AppControl::listen(const std::string& path, AppModel& app,
                                                                           std::function<void()> openBoard) {
    std::unique_ptr<AppControl> control{new AppControl{app, std::move(openBoard)}};
    auto* const raw = control.get();
    auto server = LocalSocketServer::listen(
        path, [raw](const std::string& line, LocalSocketServer::Reply reply) { raw->take(line, std::move(reply)); });
    if (!server) return std::unexpected(std::move(server.error()));
    control->server_ = std::move(*server);
    return control;
}

void AppControl::take(const std::string& line, LocalSocketServer::Reply reply) {
    const auto request = Wire::decode<BoardRequest>(line);
    auto outcome = request ? begin(*request)
                           : atOnce(refusal(ExitStatus::data, request.error().path + ": " + request.error().message));
    waiting_.push_back({std::move(outcome), std::move(reply)});
    look();
}

// Answers come last: what they lead to must find the list at rest.
void AppControl::look() {
    std::vector<std::pair<LocalSocketServer::Reply, BoardAnswer>> ready;
    std::erase_if(waiting_, [&](Waiting& one) {
        auto answer = one.outcome();
        if (answer) ready.emplace_back(std::move(one.reply), std::move(*answer));
        return answer.has_value();
    });
    for (auto& [reply, answer] : ready) {
        const auto text = Wire::encode(answer);
        reply(text ? *text : R"({"status":65,"out":"","err":"the answer is not UTF-8\n"})");
    }
}

AppControl::Outcome AppControl::begin(const BoardRequest& request) {
    return std::visit([this](const auto& verb) { return answer(verb); }, request.verb.value);
}

// The board.

AppControl::Outcome AppControl::answer(const BoardRequest::PutUp& put) {
    const auto id = editor().putUp(put.draft.payload, put.at);
    if (!id) return edited(std::unexpected(id.error()));
    return edited({}, id->lowerString() + "\n");
}

AppControl::Outcome AppControl::answer(const BoardRequest::Move& move) {
    return onItem(move.item, [&](const UUID& id) { return editor().move(id, move.to); });
}

AppControl::Outcome AppControl::answer(const BoardRequest::Turn& turn) {
    return inHand(turn.item, [&] { return editor().turnTo(turn.degrees); });
}

AppControl::Outcome AppControl::answer(const BoardRequest::Resize& resize) {
    return inHand(resize.item, [&] { return editor().resizeTo(resize.scale); });
}

AppControl::Outcome AppControl::answer(const BoardRequest::TakeDown& gone) {
    return onItem(gone.item, [&](const UUID& id) { return editor().takeDown(id); });
}

AppControl::Outcome AppControl::answer(const BoardRequest::Paint& paint) {
    return edited(editor().setBackground(paint.background));
}

AppControl::Outcome AppControl::answer(const BoardRequest::Undo&) {
    return edited(editor().undo());
}

AppControl::Outcome AppControl::answer(const BoardRequest::Redo&) {
    return edited(editor().redo());
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
    app_.people().setMyName(start.name);
    app_.startOurBoard();
    return paired();
}

AppControl::Outcome AppControl::answer(const BoardRequest::Join& join) {
    app_.people().setMyName(join.name);
    if (join.slot && std::holds_alternative<PairingPhase::Choosing>(app_.state().pairing.value)) {
        app_.pairing().chooseOneself(*join.slot);
    } else if (inviteIdIn(join.codeOrLink)) {
        app_.pairing().joinByLink(join.codeOrLink);
    } else {
        app_.pairing().joinByCode(join.codeOrLink);
    }
    return paired();
}

AppControl::Outcome AppControl::answer(const BoardRequest::Code&) {
    if (!app_.state().token) return atOnce(refusal(ExitStatus::refused, textOf(ActFault::notOnBoard)));
    app_.invitations().mintCode();
    return [this]() -> std::optional<BoardAnswer> {
        const auto& state = app_.state();
        if (state.isMintingCode) return std::nullopt;
        if (!state.shareCode) return refusal(ExitStatus::unavailable, state.notice);
        return BoardAnswer{0, state.shareCode->code + "\n", ""};
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

AppControl::Outcome AppControl::answer(const BoardRequest::Unlock&) {
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
    app_.presence().setMusic(seen.nowPlaying);
    app_.presence().setPlace(seen.here);
    app_.presence().setActivity(seen.activity);
    return atOnce({});
}

// What answers have in common.

AppControl::Outcome AppControl::edited(std::expected<void, EditorFault> done, std::string out) {
    if (!done) return atOnce(refusal(ExitStatus::data, textOf(done.error())));
    return [this, out = std::move(out), failed = app_.state().failedBatches.size()]() -> std::optional<BoardAnswer> {
        const auto& state = app_.state();
        if (!state.unstoredBatches.empty()) return std::nullopt;
        if (state.failedBatches.size() != failed) return refusal(ExitStatus::inOut, state.notice);
        return BoardAnswer{0, out, ""};
    };
}

AppControl::Outcome AppControl::onItem(const std::string& prefix,
                                       const std::function<EditorModel::Done(const UUID&)>& edit) {
    const auto found = beginningWith(app_.board(), prefix);
    if (found.size() == 1) return edited(edit(found.front()));
    return atOnce(refusal(ExitStatus::data, std::to_string(found.size()) + " items begin with \"" + prefix + "\""));
}

AppControl::Outcome AppControl::inHand(const std::string& prefix, const std::function<EditorModel::Done()>& change) {
    return onItem(prefix, [&](const UUID& id) -> EditorModel::Done {
        if (auto begun = editor().beginGesture(id); !begun) return begun;
        if (auto changed = change(); !changed) return changed;
        return editor().endGesture();
    });
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
                       [](const PairingPhase::Failed& failed) -> std::optional<BoardAnswer> {
                           return refusal(ExitStatus::refused, failed.message);
                       }},
            state.pairing.value);
    };
}

} // namespace lumaro
