// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace lumaro {

/// Which of the two people. `a` wins ties in the last-writer rule.
enum class PartnerID : std::uint8_t { a, b };

constexpr std::array<std::string_view, 2> namesOf(PartnerID) {
    return {"a", "b"};
}

constexpr PartnerID other(PartnerID partner) {
    return partner == PartnerID::a ? PartnerID::b : PartnerID::a;
}

/// The board's paper colour.
enum class BackgroundID : std::uint8_t { butter, blush, sage, sky, lilac, oat };

constexpr std::array<std::string_view, 6> namesOf(BackgroundID) {
    return {"butter", "blush", "sage", "sky", "lilac", "oat"};
}

/// What an item is. The order is that of `Payload::Value` and of the sizes in `BoardSpec`.
enum class ItemKind : std::uint8_t {
    note,
    photo,
    countdown,
    nowPlayingSlot,
    location,
    timezones,
    calendar,
    pomodoro,
    sticker,
    doodle,
};

constexpr std::array<std::string_view, 10> namesOf(ItemKind) {
    return {"note",      "photo",    "countdown", "nowPlayingSlot", "location",
            "timezones", "calendar", "pomodoro",  "sticker",        "doodle"};
}

} // namespace lumaro
