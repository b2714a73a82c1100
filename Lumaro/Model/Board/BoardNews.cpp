// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Board/BoardNews.h"

#include "LumaroCore/Presence/Pomodoro.h"
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Shortened.h"
#include "LumaroCore/Support/Unicode.h"

#include <algorithm>
#include <utility>
#include <variant>

namespace lumaro {
namespace {

// Characters of a note that a notification shows, which is a line or two; the note may hold thousands.
constexpr std::size_t longestNews = 120;
constexpr std::size_t longestName = 40;

std::string summaryOf(const DoodlePayload& doodle, const Board& board) {
    const auto surface = doodle.on ? std::ranges::find(board.items, *doodle.on, &BoardItem::id) : board.items.end();
    if (surface == board.items.end()) return "drew on the board";
    switch (surface->payload.kind()) {
    case ItemKind::sticker: return "drew on a sticker";
    case ItemKind::location: return "drew on the window"; // the card with the partner's window
    default: return "drew on the board";
    }
}

std::string summaryOf(const NotePayload& note) {
    auto text = note.pm.plainText();
    return isBlank(text) ? "a note" : std::move(text);
}

/// A few short lines stand as they were written; anything else is one.
std::string told(std::string_view summary) {
    constexpr auto mostBreaks = 2;
    const auto text = trimmed(summary);
    const auto isControl = [](char c) { return (static_cast<unsigned char>(c) < 0x20 && c != '\n') || c == 0x7f; };
    const bool isShort = firstCharacters(text, longestNews).size() == text.size();
    const bool standsAsItIs =
        isShort && std::ranges::count(text, '\n') <= mostBreaks && std::ranges::none_of(text, isControl);
    return standsAsItIs ? std::string{text} : shortened(text, longestNews);
}

std::string bodyOf(std::span<const BoardItem* const> items, const Board& board, std::string_view name) {
    if (items.size() > 1) return std::string{name} + " sent " + std::to_string(items.size()) + " things";
    const auto summary = summaryOf(*items.front(), board);
    return summary ? told(*summary) : std::string{name} + " pinned something up";
}

std::string titleOf(std::string_view name) {
    return isBlank(name) ? "Lumaro" : shortened(name, longestName);
}

std::string inSentence(std::string_view name) {
    return isBlank(name) ? "your person" : shortened(name, longestName);
}

} // namespace

std::optional<std::string> summaryOf(const BoardItem& item, const Board& board) {
    using Summary = std::optional<std::string>;
    return std::visit(Overloaded{
                          [](const PhotoPayload&) -> Summary { return "a photo"; },
                          [](const NotePayload& note) -> Summary { return summaryOf(note); },
                          [](const LocationPayload&) -> Summary { return "put up our windows"; },
                          [](const TimezonesPayload&) -> Summary { return "put up the clocks"; },
                          [](const PomodoroPayload&) -> Summary { return "put up the block card"; },
                          [](const CalendarPayload&) -> Summary { return "put up the day page"; },
                          [](const StickerPayload&) -> Summary { return "stuck a sticker on the window"; },
                          [&](const DoodlePayload& doodle) -> Summary { return summaryOf(doodle, board); },
                          [](const CountdownPayload&) -> Summary { return std::nullopt; },
                          [](const NowPlayingSlotPayload&) -> Summary { return std::nullopt; },
                      },
                      item.payload.value());
}

LocalNotification newsOf(std::span<const BoardItem* const> items, const Board& board, std::string_view partnerName) {
    return {.title = titleOf(partnerName),
            .body = bodyOf(items, board, inSentence(partnerName)),
            .picturePath = std::nullopt};
}

LocalNotification newsOfMany(std::size_t count, std::string_view partnerName) {
    return {.title = titleOf(partnerName),
            .body = inSentence(partnerName) + " put up " + std::to_string(count) + " things",
            .picturePath = std::nullopt};
}

LocalNotification newsOf(const PomodoroPayload& timer, std::string_view partnerName) {
    if (timer.phase == PomodoroPhase::coolDown) {
        return {.title = "the cool-down is over",
                .body = "another block, whenever you two like.",
                .picturePath = std::nullopt};
    }
    const auto who = Pomodoro::isShared(timer) ? "you and " + inSentence(partnerName) + " made it." : "you made it.";
    return {.title = "the block is over", .body = who + " cool down a little, or rest?", .picturePath = std::nullopt};
}

} // namespace lumaro
