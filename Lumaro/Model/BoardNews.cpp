// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/BoardNews.h"

#include "LumaroCore/Support/Overloaded.h"

#include <algorithm>
#include <variant>

namespace lumaro {
namespace {

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
    const bool isBlank = text.find_first_not_of(" \t\n\r") == std::string::npos;
    return isBlank ? "a note" : text;
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

std::string newsOf(std::span<const BoardItem* const> items, const Board& board, std::string_view partnerName) {
    const std::string name{partnerName};
    if (items.size() > 1) return name + " sent " + std::to_string(items.size()) + " things";
    const auto summary = summaryOf(*items.front(), board);
    return summary ? *summary : name + " pinned something up";
}

} // namespace lumaro
