// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Music/MusicWatcher.h"

#include "LumaroCore/Music/MusicPlayers.h"
#include "LumaroCore/Music/MusicSampleParser.h"
#include "LumaroCore/Music/MusicScripts.h"

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

NowPlaying nowPlaying(const MusicSample& sample, Instant at, std::optional<std::string> artworkURL) {
    return {.isPlaying = sample.state == PlaybackState::playing,
            .progressMs = sample.progressMs,
            .sampledAt = at,
            .durationMs = sample.durationMs,
            .title = sample.title,
            .artist = sample.artist,
            .artworkURL = std::move(artworkURL),
            .source = sample.source};
}

} // namespace

void MusicWatcher::start() {
    if (std::exchange(isRunning_, true)) return;
    for (const auto source : musicSources) {
        observers_.push_back(ports_.notifications.observe(source, [this] { scheduleRefresh(); }));
    }
    refresh();
}

void MusicWatcher::stop() {
    isRunning_ = false;
    ++generation_;
    observers_.clear();
    debounceTask_.reset();
    run_.reset();
    search_.reset();
}

void MusicWatcher::scheduleRefresh() {
    debounceTask_ = ports_.sleeper.wait(debounceSeconds_, [this] { refresh(); });
}

void MusicWatcher::refresh() {
    ++generation_;
    samples_.clear();
    search_.reset();
    ask(0);
}

// The players from this one on, one after the other.
void MusicWatcher::ask(std::size_t place) {
    while (place < musicSources.size() && !ports_.players.isRunning(musicSources.at(place))) ++place;
    if (place == musicSources.size()) return publishSamples();
    run_ = ports_.scriptRunner.run(MusicScripts::source(musicSources.at(place)),
                                   [this, place, generation = generation_](const ScriptRunner::Answer& answer) {
                                       if (generation == generation_) answered(place, answer);
                                   });
}

void MusicWatcher::answered(std::size_t place, const ScriptRunner::Answer& answer) {
    if (!answer) {
        ports_.log.write(LogLevel::debug, "music", answer.error().errorDescription());
    } else {
        if (auto sample = MusicSampleParser::parse(*answer, musicSources.at(place)))
            samples_.push_back(std::move(*sample));
    }
    ask(place + 1);
}

void MusicWatcher::publishSamples() {
    if (samples_.empty()) return publish(std::nullopt);
    const auto playing = std::ranges::find(samples_, PlaybackState::playing, &MusicSample::state);
    const auto sample = playing == samples_.end() ? samples_.front() : *playing;
    const auto at = ports_.clock.now();
    const auto* const known = artwork_.find(sample.trackKey);
    const bool mustLook = known == nullptr;
    const auto generation = generation_;
    publish(nowPlaying(sample, at, mustLook ? std::nullopt : *known));
    if (mustLook && generation == generation_) lookForArtwork(sample, at);
}

void MusicWatcher::publish(std::optional<NowPlaying> playing) {
    current_ = std::move(playing);
    // From a local: whoever hears it may publish anew.
    if (updates_) updates_(std::optional{current_});
}

void MusicWatcher::lookForArtwork(const MusicSample& sample, Instant at) {
    search_ = ports_.artworkFetcher.fetch(
        sample.artworkQuery(), [this, sample, at, generation = generation_](ArtworkFetcher::Answer answer) {
            if (generation != generation_) return;
            if (!answer) ports_.log.write(LogLevel::debug, "music", answer.error().errorDescription());
            auto url = answer ? std::move(*answer) : std::nullopt;
            artwork_.put(sample.trackKey, url);
            if (url) publish(nowPlaying(sample, at, std::move(url)));
        });
}

std::optional<std::string> MusicWatcher::cachedArtwork(std::string_view trackKey) const {
    const auto* const known = artwork_.find(trackKey);
    return known == nullptr ? std::nullopt : *known;
}

void MusicWatcher::clearArtworkCache() {
    artwork_.clear();
}

} // namespace lumaro
