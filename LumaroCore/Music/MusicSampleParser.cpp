// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Music/MusicSampleParser.h"

#include "LumaroCore/Support/EnumNames.h"

#include <algorithm>
#include <cmath>

namespace lumaro {

void MusicSample::hashInto(Hasher& hasher) const {
    hasher.add(state);
    hasher.add(title);
    hasher.add(artist);
    hasher.add(album);
    hasher.add(trackKey);
    hasher.add(durationMs);
    hasher.add(progressMs);
    hasher.add(source);
}

namespace {

constexpr std::size_t wholeAnswer = 7;
// Beyond what doubles count one by one.
constexpr double absurd = 9007199254740992.0;

std::int64_t wholeMilliseconds(double milliseconds) {
    return std::abs(milliseconds) < absurd ? static_cast<std::int64_t>(milliseconds) : 0;
}

std::optional<PlaybackState> stateOf(const ScriptValue& value) {
    auto text = value.text();
    if (!text) return std::nullopt;
    std::ranges::transform(*text, text->begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return fromName<PlaybackState>(*text);
}

} // namespace

std::optional<MusicSample> MusicSampleParser::parse(const ScriptValue& value, MusicSource source) {
    const auto* const list = std::get_if<ScriptValue::List>(&value.value);
    if (list == nullptr || list->empty()) return std::nullopt;
    const auto state = stateOf(list->front());
    if (!state) return std::nullopt;
    MusicSample sample;
    sample.source = source;
    if (*state == PlaybackState::stopped || list->size() < wholeAnswer) return sample;
    sample.state = *state;
    const auto text = [&](std::size_t place) { return (*list)[place].text().value_or(""); };
    sample.title = text(1);
    sample.artist = text(2);
    sample.album = text(3);
    sample.trackKey = text(4);
    sample.durationMs = durationMs((*list)[5].doubleValue().value_or(0), source);
    sample.progressMs = wholeMilliseconds((*list)[6].doubleValue().value_or(0) * 1000);
    return sample;
}

std::int64_t MusicSampleParser::durationMs(double reported, MusicSource source) {
    return wholeMilliseconds(source == MusicSource::appleMusic ? reported * 1000 : reported);
}

} // namespace lumaro
