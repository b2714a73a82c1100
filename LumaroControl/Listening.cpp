// SPDX-License-Identifier: Apache-2.0
#include "LumaroControl/Listening.h"

#include "LumaroCore/Presence/Playback.h"
#include "LumaroCore/Support/JsonCodec.h"
#include "LumaroCore/Support/OneLine.h"

namespace lumaro {
namespace {

// 0:05, 12:34, 1:02:03.
std::string clockText(std::int64_t milliseconds) {
    const auto twoDigits = [](std::int64_t number) {
        const auto digits = std::to_string(number);
        return digits.size() < 2 ? "0" + digits : digits;
    };
    constexpr int minute = 60;
    const auto seconds = milliseconds / 1000;
    const auto minutes = seconds / minute;
    const auto tail = ":" + twoDigits(seconds % minute);
    if (minutes < minute) return std::to_string(minutes) + tail;
    return std::to_string(minutes / minute) + ":" + twoDigits(minutes % minute) + tail;
}

std::string trackText(const std::optional<NowPlaying>& playing) {
    if (!playing || !Playback::hasTrack(*playing)) return "nothing plays";
    auto text = "\"" + onOneLine(playing->title) + "\"";
    if (!playing->artist.empty()) text += " by " + onOneLine(playing->artist);
    if (playing->durationMs > 0) text += ", " + clockText(playing->durationMs);
    if (!playing->isPlaying) text += ", paused";
    if (playing->artworkURL) text += ", cover " + onOneLine(*playing->artworkURL);
    return text;
}

} // namespace

std::string listeningJson(const Listening& listening) {
    const auto text = Wire::encode(listening);
    return (text ? *text : "{}") + "\n";
}

std::string listeningText(const Listening& listening, std::string_view partner) {
    return "you: " + (listening.shares ? trackText(listening.own) : "not shared") + "\n" + std::string{partner} + ": " +
           trackText(listening.partner) + "\n";
}

} // namespace lumaro
