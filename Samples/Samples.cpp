// SPDX-License-Identifier: Apache-2.0
#include "Samples/Samples.h"

#include <array>
#include <cmath>
#include <utility>

namespace lumaro::samples {
namespace {

using namespace std::chrono_literals;

// A multiple of 0.1, as the coordinates of ink are.
double tenths(Random& random, int low, int high) {
    return pick(random, low * 10, high * 10) / 10.0;
}

Instant nearNoon(Random& random) {
    return noon + std::chrono::milliseconds{pick(random, -2000, 2000)};
}

PartnerID anyone(Random& random) {
    return chance(random, 0.5) ? PartnerID::a : PartnerID::b;
}

std::string anyText(Random& random, int words) {
    static constexpr std::array<const char*, 10> choice{"buy",  "oranges", "for", "bo \"the cat\"", "tonight\n",
                                                        "love", "🍊",      "né",  "see/you",        "\\o/"};
    std::string text;
    for (int i = 0; i < words; ++i) text.append(choice[pick(random, std::size_t{0}, choice.size() - 1)]).append(" ");
    return text;
}

PMNode anyDocument(Random& random) {
    std::vector<PMNode> paragraphs;
    for (int i = pick(random, 0, 2); i >= 0; --i) {
        std::vector<PMNode> texts{pm::text(anyText(random, pick(random, 0, 8)))};
        if (chance(random, 0.3)) texts.push_back(pm::text("bold", std::vector{pm::bold(), pm::textColor("#c0392b")}));
        paragraphs.push_back(pm::paragraph(std::move(texts)));
    }
    return pm::doc(std::move(paragraphs));
}

InkStroke curve(Random& random, int points) {
    InkStroke stroke{.ink = "charcoal", .width = 3.5, .points = {}};
    Point pen{tenths(random, 20, 200), tenths(random, 20, 200)};
    for (int i = 0; i < points; ++i) {
        stroke.points.push_back(pen);
        pen.x = std::round((pen.x + tenths(random, -4, 6)) * 10) / 10;
        pen.y = std::round((pen.y + tenths(random, -5, 5)) * 10) / 10;
    }
    return stroke;
}

DoodlePayload doodle(Random& random, int strokes, int points) {
    DoodlePayload payload{.width = 420.5, .height = 310, .strokes = {}, .on = std::nullopt};
    for (int i = 0; i < strokes; ++i) payload.strokes.push_back(curve(random, points));
    return payload;
}

PomodoroPayload anyTimer(Random& random) {
    PomodoroPayload timer{.minutes = pick(random, 1, 180),
                          .phase = static_cast<PomodoroPhase>(pick(random, 0, 2)),
                          .startedAt = std::nullopt,
                          .startedBy = std::nullopt,
                          .joinedAt = std::nullopt};
    if (chance(random, 0.7)) timer.startedAt = nearNoon(random);
    if (chance(random, 0.7)) timer.startedBy = anyone(random);
    if (chance(random, 0.4)) timer.joinedAt = nearNoon(random);
    return timer;
}

Payload anyPayload(Random& random, ItemKind kind) {
    switch (kind) {
    case ItemKind::note: {
        NotePayload note{.pm = anyDocument(random), .paper = "butter", .pin = "brass", .expiresAt = std::nullopt};
        if (chance(random, 0.5)) note.expiresAt = nearNoon(random);
        return note;
    }
    case ItemKind::photo: {
        PhotoPayload photo{numberedId(pick(random, 1U, 99U)), anyText(random, 3), std::nullopt, std::nullopt};
        if (chance(random, 0.5)) photo.aspect = tenths(random, 0, 3);
        if (chance(random, 0.5)) photo.takenAt = nearNoon(random);
        return photo;
    }
    case ItemKind::countdown: return CountdownPayload{nearNoon(random), anyText(random, 2)};
    case ItemKind::nowPlayingSlot: return NowPlayingSlotPayload{anyone(random)};
    case ItemKind::location: return LocationPayload{anyone(random)};
    case ItemKind::timezones:
        return TimezonesPayload{chance(random, 0.5) ? TemperatureUnit::celsius : TemperatureUnit::fahrenheit};
    case ItemKind::calendar: return CalendarPayload{anyone(random)};
    case ItemKind::pomodoro: return anyTimer(random);
    case ItemKind::sticker: return StickerPayload{numberedId(pick(random, 1U, 99U)), tenths(random, 0, 3)};
    case ItemKind::doodle: {
        auto drawing = doodle(random, pick(random, 0, 3), pick(random, 1, 12));
        if (chance(random, 0.6)) drawing.on = numberedId(pick(random, 1U, 8U));
        return drawing;
    }
    }
    return {};
}

BoardItem itemHolding(Random& random, const UUID& id, Payload payload) {
    BoardItem item;
    item.id = id;
    item.center = {tenths(random, 0, 1600), tenths(random, 0, 1000)};
    item.rotationDegrees = std::uniform_real_distribution{-4.0, 4.0}(random);
    item.scale = chance(random, 0.7) ? 1.0 : pick(random, 50, 200) / 100.0;
    item.z = pick(random, 1, 99);
    item.author = anyone(random);
    item.createdAt = nearNoon(random);
    item.updatedAt = nearNoon(random);
    item.payload = std::move(payload);
    return item;
}

} // namespace

UUID numberedId(std::uint64_t number) {
    UUID id;
    for (std::size_t i = 0; i < 8; ++i) id.bytes[15 - i] = static_cast<std::uint8_t>(number >> (8 * i));
    return id;
}

Payload plainNote(std::string text) {
    return NotePayload{.pm = pm::doc({pm::paragraph({pm::text(std::move(text))})}),
                       .paper = "butter",
                       .pin = "brass",
                       .expiresAt = {}};
}

BoardItem anyItem(Random& random, const UUID& id) {
    return itemHolding(random, id, anyPayload(random, static_cast<ItemKind>(pick(random, 0, 9))));
}

Board anyBoard(Random& random, std::size_t count) {
    Board board;
    board.background = static_cast<BackgroundID>(pick(random, 0, 5));
    board.updatedAt = nearNoon(random);
    if (chance(random, 0.5)) board.threadTiedAt = nearNoon(random);
    for (std::size_t i = 1; i <= count; ++i) board.items.push_back(anyItem(random, numberedId(i)));
    return board;
}

Op anyOp(Random& random, std::uint64_t ids) {
    const auto id = numberedId(pick(random, std::uint64_t{1}, ids));
    const int choice = pick(random, 0, 9);
    if (choice == 0) return {SetBackground{static_cast<BackgroundID>(pick(random, 0, 5))}};
    if (choice <= 3) return {Delete{.itemId = id, .deletedAt = nearNoon(random)}};
    auto item = anyItem(random, id);
    if (chance(random, 0.05)) item.rotationDegrees = 15.5;
    if (chance(random, 0.05)) item.scale = 2.5;
    return {Upsert{std::move(item)}};
}

Board typicalBoard() {
    Random random{30};
    Board board;
    board.background = BackgroundID::sage;
    board.threadTiedAt = noon - 24h;
    board.updatedAt = noon;
    // Mostly notes and photos, a few doodles, and one of each live card.
    static constexpr std::array kinds{
        ItemKind::note,     ItemKind::photo,    ItemKind::note,      ItemKind::sticker,       ItemKind::note,
        ItemKind::photo,    ItemKind::doodle,   ItemKind::countdown, ItemKind::timezones,     ItemKind::pomodoro,
        ItemKind::calendar, ItemKind::location, ItemKind::note,      ItemKind::nowPlayingSlot};
    for (std::size_t i = 0; i < 30; ++i) {
        const auto kind = kinds[i % kinds.size()];
        auto payload = kind == ItemKind::doodle ? Payload{doodle(random, 3, 55)} : anyPayload(random, kind);
        board.items.push_back(itemHolding(random, numberedId(random()), std::move(payload)));
    }
    return board;
}

Board heavyBoard() {
    Random random{60};
    Board board;
    board.updatedAt = noon;
    for (std::size_t i = 0; i < BoardSpec::maxLiveItems; ++i) {
        auto payload = i % 2 == 0 ? plainNote(anyText(random, 4650)) : Payload{doodle(random, 12, 240)};
        board.items.push_back(itemHolding(random, numberedId(random()), std::move(payload)));
    }
    return board;
}

Board fullBoard() {
    Random random{61};
    Board board;
    board.updatedAt = noon;
    for (std::size_t i = 0; i < BoardSpec::maxLiveItems; ++i) {
        board.items.push_back(itemHolding(random, numberedId(random()), plainNote("buy oranges for bo")));
    }
    return board;
}

} // namespace lumaro::samples
