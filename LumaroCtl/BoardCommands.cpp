// SPDX-License-Identifier: Apache-2.0
#include "LumaroCtl/BoardCommands.h"

#include "LumaroControl/BoardText.h"
#include "LumaroCore/BoardLogic/Apply.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Fatal.h"
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Wire.h"
#include "LumaroCtl/Profile.h"
#include "LumaroCtl/Streams.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace lumaro {
namespace {

BoardAnswer refusal(ExitStatus status, std::string line) {
    return {std::to_underlying(status), "", std::move(line) + "\n"};
}

std::string textOf(EditFault fault) {
    switch (fault) {
    case EditFault::noSuchItem: return "no such item";
    case EditFault::wrongKind: return "an item of this kind has no such edit";
    case EditFault::cannotResize: return "an item of this kind keeps its size";
    case EditFault::notFinite: return "a number is missing";
    case EditFault::locked: return "the item is locked";
    }
    return "";
}

std::string textOf(RejectionReason reason) {
    switch (reason) {
    case RejectionReason::itemCapExceeded:
        return "the board is full: it has " + std::to_string(BoardSpec::maxLiveItems) + " items";
    case RejectionReason::itemTooLarge:
        return "too much for one item: it may have " + std::to_string(BoardSpec::maxItemJSONBytes) + " bytes";
    case RejectionReason::stale:
    case RejectionReason::deleted:
    case RejectionReason::batchCapExceeded:
    case RejectionReason::invalidRotation:
    case RejectionReason::invalidScale: return "the board does not take it: " + std::string{nameOf(reason)};
    }
    return "";
}

BoardAnswer answerTo(const SendError& error) {
    return std::visit(
        Overloaded{[](const BatchTooLarge&) { return refusal(ExitStatus::data, "too many edits at once"); },
                   [](const EncodeError&) { return refusal(ExitStatus::data, "the text is not UTF-8"); },
                   [](const FileError& file) {
                       const auto failure = failureOf(file);
                       return refusal(failure.status, "nothing was changed: " + failure.message);
                   }},
        error);
}

} // namespace

BoardCommands::BoardCommands(BoardSession& session, WallClock& clock, Sleeper& sleeper)
    : session_(session), clock_(clock), sleeper_(sleeper) {
}

Hand BoardCommands::hand() const {
    return {session_.slot(), Wire::truncatedToMilliseconds(clock_.now())};
}

void BoardCommands::execute(BoardRequest request, Then then) {
    auto& task = tasks_.emplace_back();
    task.request = std::move(request);
    task.then = std::move(then);
    task.isLate = !(task.request.wait > 0);
    if (!task.isLate) {
        task.timer = sleeper_.wait(Seconds{task.request.wait}, [this, &task] {
            task.isLate = true;
            advance();
        });
    }
    advance();
}

void BoardCommands::received(const ServerMessage& message) {
    if (std::holds_alternative<ServerMessage::Welcome>(message.value)) wasWelcomed_ = true;
    if (const auto* error = std::get_if<ServerMessage::Error>(&message.value)) {
        for (auto& task : tasks_) {
            if (!task.batches.empty()) task.complaint = onOneLine(error->message);
        }
    }
    advance();
}

void BoardCommands::stateChanged(const ConnectionState& state) {
    if (!std::holds_alternative<ConnectionState::Connected>(state.value)) wasWelcomed_ = false;
    advance();
}

bool BoardCommands::isFresh() const {
    return std::visit(Overloaded{[](const ConnectionState::Connecting&) { return false; },
                                 [this](const ConnectionState::Connected&) { return wasWelcomed_; },
                                 [](const ConnectionState::Idle&) { return true; },
                                 [](const ConnectionState::Waiting&) { return true; },
                                 [](const ConnectionState::Stopped&) { return true; },
                                 [](const ConnectionState::Rejected&) { return true; }},
                      session_.client().connectionState().value);
}

// Nothing more is to be heard of its edit within its time.
bool BoardCommands::isSettled(const Task& task) const {
    if (task.isLate || !session_.client().isConnected()) return true;
    const auto& outbox = session_.client().outbox();
    return std::ranges::none_of(task.batches, [&](const UUID& batch) { return outbox.contains(batch); });
}

// Answers come last: what they lead to must find the list at rest.
void BoardCommands::advance() {
    std::list<Task> done;
    for (auto task = tasks_.begin(); task != tasks_.end();) {
        const auto next = std::next(task);
        if (!task->wasRun && (task->isLate || isFresh())) run(*task);
        if (task->wasRun && isSettled(*task)) done.splice(done.end(), tasks_, task);
        task = next;
    }
    for (auto& task : done) {
        conclude(task);
        task.timer.reset();
        task.then(std::move(task.answer));
    }
}

void BoardCommands::run(Task& task) {
    task.wasRun = true;
    auto& batches = task.batches;
    task.answer = std::visit(
        Overloaded{[&](const EditRequest auto& request) { return edit(verbOf(request, board()), batches); },
                   [&](const BoardRequest::Show& wanted) { return show(wanted); },
                   [&](const BoardRequest::Pending&) { return pending(); },
                   [&](const BoardRequest::Status&) { return status(); },
                   [](const auto&) { return refusal(ExitStatus::usage, "only the application does that: --app"); }},
        task.request.verb.value);
}

void BoardCommands::conclude(Task& task) const {
    if (task.batches.empty()) return;
    auto& answer = task.answer;
    const auto& client = session_.client();
    const auto waits = [&](const UUID& batch) { return client.outbox().contains(batch); };
    if (std::holds_alternative<ConnectionState::Rejected>(client.connectionState().value)) {
        answer = refusal(ExitStatus::refused, LumaroCoreError{LumaroCoreError::Unauthorized{}}.errorDescription());
    } else if (task.complaint) {
        answer = refusal(ExitStatus::refused, "the room: " + *task.complaint);
    } else if (std::ranges::any_of(task.batches, waits)) {
        answer.err += "queued: it goes out when the room is reachable\n";
    }
}

BoardAnswer BoardCommands::edit(const AskedVerb& verb, std::vector<UUID>& batches) {
    if (!verb) return refusal(ExitStatus::data, verb.error());
    const auto ops = opsOf(*verb, board(), hand());
    if (!ops) return refusal(ExitStatus::data, textOf(ops.error()));
    // The room follows the same rules: what this board refuses would go out in vain.
    for (const auto& batch : Edits::batches(*ops)) {
        const auto result = BoardLogic::apply(batch, board(), hand().now);
        if (!result.rejected.empty()) return refusal(ExitStatus::data, textOf(result.rejected.front().reason));
    }
    auto outcome = session_.act(*ops);
    if (!outcome) return answerTo(outcome.error());
    batches = ops->empty() ? batchesAlreadyDoing(*verb, session_.board()) : std::move(outcome->batches);
    return {0, outputOf(*verb), ""};
}

BoardAnswer BoardCommands::show(const BoardRequest::Show& show) const {
    if (!show.json) return {0, boardText(board(), session_.names()), ""};
    auto text = Wire::encode(board());
    if (!text) fatal("a board that was read cannot be written");
    return {0, std::move(*text) + "\n", ""};
}

BoardAnswer BoardCommands::pending() const {
    std::ostringstream text;
    for (const auto& batch : session_.client().pending()) {
        text << batch.batchId.lowerString();
        for (const auto& op : batch.ops) text << "  " << opText(op);
        text << '\n';
    }
    return {0, std::move(text).str(), ""};
}

BoardAnswer BoardCommands::status() const {
    const auto& client = session_.client();
    const auto own = session_.slot();
    const bool isOn = client.isConnected();
    const auto partner = other(own);
    std::ostringstream text;
    text << "board " << client.endpoints().coupleId << " on " << onOneLine(client.endpoints().serverURL) << '\n'
         << "you are " << nameOfSlot(session_.names(), own) << " (" << nameOf(own) << ")\n";
    if (isOn && !session_.paired().contains(partner)) {
        text << "partner: nobody yet\n";
    } else if (isOn) {
        const bool isPartnerOn = session_.online().contains(partner);
        text << "partner: " << nameOfSlot(session_.names(), partner) << (isPartnerOn ? ", online\n" : ", not online\n");
    }
    text << "room: " << stateText(client.connectionState()) << '\n'
         << board().items.size() << " on the board, " << client.pendingCount() << " waiting for the room\n";
    return {0, std::move(text).str(), ""};
}

} // namespace lumaro
