// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Board/BoardNews.h"

#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Unicode.h"

#include <algorithm>
#include <variant>

namespace lumaro {
namespace {

// A notification shows the first lines; a note may hold thousands.
constexpr std::size_t longestNews = 200;

std::string_view withoutBlankLines(std::string_view text) {
    for (auto end = text.find('\n'); end != std::string_view::npos && isBlank(text.substr(0, end));
         end = text.find('\n')) {
        text.remove_prefix(end + 1);
    }
    for (auto end = text.rfind('\n'); end != std::string_view::npos && isBlank(text.substr(end));
         end = text.rfind('\n')) {
        text = text.substr(0, end);
    }
    return trimmed(text);
}

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
    const auto whole = note.pm.plainText();
    const auto text = withoutBlankLines(whole);
    if (isBlank(text)) return "a note";
    const auto start = firstCharacters(text, longestNews);
    return start.size() == text.size() ? std::string{text} : std::string{trimmed(start)} + "…";
}

std::string bodyOf(std::span<const BoardItem* const> items, const Board& board, std::string_view name) {
    if (items.size() > 1) return std::string{name} + " sent " + std::to_string(items.size()) + " things";
    const auto summary = summaryOf(*items.front(), board);
    return summary ? *summary : std::string{name} + " pinned something up";
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
    const bool isNamed = !isBlank(partnerName);
    return {.title = isNamed ? std::string{partnerName} : "Lumaro",
            .body = bodyOf(items, board, isNamed ? partnerName : "your person"),
            .picturePath = std::nullopt};
}

} // namespace lumaro
