// SPDX-License-Identifier: Apache-2.0
#include "LumaroControl/BoardText.h"

#include "LumaroControl/Moments.h"
#include "LumaroCore/BoardLogic/BoardDiff.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/OneLine.h"
#include "LumaroCore/Support/Overloaded.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace lumaro {
namespace {

// What a person wrote, on one line and not too long of it.
std::string inQuotes(std::string_view text) {
    constexpr std::size_t longest = 60;
    std::string line{text};
    std::ranges::replace(line, '\n', ' ');
    if (line.size() > longest) {
        std::size_t end = longest;
        // Not within a character.
        while (end > 0 && (static_cast<unsigned char>(line[end]) & 0xC0U) == 0x80U) --end;
        line = line.substr(0, end) + "…";
    }
    return "\"" + onOneLine(line) + "\"";
}

std::string payloadText(const Payload& payload) {
    const auto cardOf = [](const char* what, PartnerID slot) { return what + std::string{nameOf(slot)}; };
    return std::visit(
        Overloaded{[](const NotePayload& note) { return "note " + inQuotes(note.pm.plainText()); },
                   [](const PhotoPayload& photo) { return "photo " + inQuotes(photo.caption); },
                   [](const CountdownPayload& countdown) {
                       return "countdown " + inQuotes(countdown.label) + " to " + momentText(countdown.targetDate);
                   },
                   [&](const NowPlayingSlotPayload& card) { return cardOf("music of ", card.slot); },
                   [&](const LocationPayload& card) { return cardOf("location of ", card.slot); },
                   [](const TimezonesPayload& card) { return "time zones in " + std::string{nameOf(card.units)}; },
                   [&](const CalendarPayload& card) { return cardOf("calendar of ", card.slot); },
                   [](const PomodoroPayload& timer) {
                       return "block card of " + std::to_string(timer.minutes) + " min, " +
                              std::string{nameOf(timer.phase)};
                   },
                   [](const StickerPayload&) { return std::string{"sticker"}; },
                   [](const DoodlePayload& doodle) {
                       return "doodle of " + std::to_string(doodle.strokes.size()) + " strokes";
                   }},
        payload.value());
}

std::string placeText(Point place) {
    return std::to_string(std::lround(place.x)) + "," + std::to_string(std::lround(place.y));
}

std::string listOf(const PartnerSet& slots, const SlotNames& names) {
    std::string text;
    for (const auto slot : {PartnerID::a, PartnerID::b}) {
        if (slots.contains(slot)) text += (text.empty() ? "" : " and ") + nameOfSlot(names, slot);
    }
    return text.empty() ? "nobody" : text;
}

} // namespace

std::string shortId(const UUID& id) {
    return id.lowerString().substr(0, 8);
}

std::string nameOfSlot(const SlotNames& names, PartnerID slot) {
    return onOneLine(names.of(slot).value_or(std::string{nameOf(slot)}));
}

std::string itemText(const BoardItem& item) {
    return payloadText(item.payload);
}

std::string boardText(const Board& board, const SlotNames& names) {
    std::ostringstream text;
    text << nameOf(board.background) << ", " << board.items.size() << (board.items.size() == 1 ? " item" : " items")
         << (board.threadTiedAt ? ", thread tied " + momentText(*board.threadTiedAt) : std::string{}) << '\n';
    std::vector<const BoardItem*> items;
    items.reserve(board.items.size());
    for (const auto& item : board.items) items.push_back(&item);
    std::ranges::stable_sort(items, {}, [](const BoardItem* item) { return item->z; });
    for (const auto* item : items) {
        text << shortId(item->id) << "  " << nameOfSlot(names, item->creator()) << "  " << placeText(item->center)
             << "  " << itemText(*item) << '\n';
    }
    return std::move(text).str();
}

std::vector<std::string> changeLines(const Board& before, const Board& after, const SlotNames& names) {
    const auto diff = BoardLogic::diff(before, after);
    std::vector<std::string> lines;
    const auto tell = [&](const char* what, const BoardItem& item, const std::string& where = {}) {
        lines.push_back(shortId(item.id) + "  " + what + itemText(item) + where);
    };
    for (const auto row : diff.removed) tell("down: ", before.items[row]);
    for (const auto row : diff.added) {
        const auto& item = after.items[row];
        tell("up: ", item, " at " + placeText(item.center) + " by " + nameOfSlot(names, item.author));
    }
    for (const auto row : diff.moved) {
        const auto& item = after.items[row];
        const auto* was = before.find(item.id);
        const bool hangsThere = was != nullptr && was->center == item.center;
        tell(hangsThere ? "tilted, scaled or raised: " : "moved: ", item,
             hangsThere ? std::string{} : " to " + placeText(item.center));
    }
    for (const auto row : diff.changed) tell("changed: ", after.items[row]);
    if (diff.background) lines.push_back("background " + std::string{nameOf(after.background)});
    if (diff.thread) lines.emplace_back("the red thread is tied");
    return lines;
}

std::string opText(const Op& op) {
    return std::visit(
        Overloaded{[](const Upsert& upsert) { return shortId(upsert.item.id) + " " + itemText(upsert.item); },
                   [](const Delete& gone) { return shortId(gone.itemId) + " down"; },
                   [](const SetBackground& paint) { return "background " + std::string{nameOf(paint.background)}; }},
        op.value);
}

std::string stateText(const ConnectionState& state) {
    using Text = std::string;
    return std::visit(Overloaded{[](const ConnectionState::Idle&) { return Text{"idle"}; },
                                 [](const ConnectionState::Connecting&) { return Text{"connecting"}; },
                                 [](const ConnectionState::Connected&) { return Text{"connected"}; },
                                 [](const ConnectionState::Waiting& waiting) {
                                     return "offline; next try in " +
                                            std::to_string(std::lround(waiting.delay.count())) + " s";
                                 },
                                 [](const ConnectionState::Stopped&) { return Text{"stopped"}; },
                                 [](const ConnectionState::Rejected&) { return Text{"refused"}; }},
                      state.value);
}

std::optional<std::string> messageText(const ServerMessage& message, const SlotNames& names) {
    using Text = std::optional<std::string>;
    return std::visit(
        Overloaded{
            [&](const ServerMessage::Welcome& welcome) { return Text{"online: " + listOf(welcome.roster, names)}; },
            [&](const ServerMessage::Roster& roster) { return Text{"online: " + listOf(roster.online, names)}; },
            [&](const ServerMessage::Presence& presence) {
                const auto& playing = presence.nowPlaying;
                if (!playing || !playing->isPlaying) return Text{};
                return Text{nameOfSlot(names, presence.from) + " plays " + inQuotes(playing->title)};
            },
            [](const ServerMessage::Error& error) { return Text{"the room: " + onOneLine(error.message)}; },
            [](const ServerMessage::Ops&) { return Text{}; }, [](const ServerMessage::Ack&) { return Text{}; },
            [](const ServerMessage::Calendar&) { return Text{}; }, [](const ServerMessage::Thread&) { return Text{}; }},
        message.value);
}

} // namespace lumaro
