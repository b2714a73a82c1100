// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Presence/MusicSharing.h"

#include "LumaroCore/Presence/Playback.h"
#include "LumaroCore/Support/Mutant.h"

#include <utility>

namespace lumaro {
namespace {

constexpr Seconds debounce{0.3};
constexpr std::string_view sharesKey = "sharesMusic";
constexpr std::string_view browsersKey = "musicIncludesBrowsers";
constexpr std::string_view coversKey = "looksForCovers";

} // namespace

MusicSharing::MusicSharing(Ports ports, MusicState& state, PresenceSender& presence, Announcer& announcer)
    : ports_(ports), state_(state), presence_(presence), announcer_(announcer),
      watcher_(ports.watcher, debounce, [this](const auto& playing) { hear(playing); }) {
    state_.musicConsent = consentIn(ports_.defaults, sharesKey);
    state_.includesBrowsers = ports_.defaults.boolean(browsersKey).value_or(false);
    state_.looksForCovers = ports_.defaults.boolean(coversKey).value_or(false);
}

void MusicSharing::start() {
    ports_.watcher.players.setIncludesBrowsers(state_.includesBrowsers);
    follow();
}

void MusicSharing::stop() {
    watcher_.stop();
}

void MusicSharing::share(bool shares) {
    const Announcer::Update update{announcer_};
    state_.musicConsent = consentOf(shares);
    ports_.defaults.setBoolean(sharesKey, shares);
    announcer_.changed(AppChange::music);
    follow();
}

void MusicSharing::includeBrowsers(bool includes) {
    const Announcer::Update update{announcer_};
    state_.includesBrowsers = includes;
    ports_.defaults.setBoolean(browsersKey, includes);
    ports_.watcher.players.setIncludesBrowsers(includes);
    announcer_.changed(AppChange::music);
    if (watcher_.isRunning()) watcher_.refresh();
}

void MusicSharing::lookForCovers(bool looks) {
    const Announcer::Update update{announcer_};
    state_.looksForCovers = looks;
    ports_.defaults.setBoolean(coversKey, looks);
    announcer_.changed(AppChange::music);
    forgetCovers();
}

void MusicSharing::forgetCovers() {
    if (auto shared = presence_.music(); shared && std::exchange(shared->artworkURL, std::nullopt)) {
        presence_.setMusic(std::move(shared));
    }
    watcher_.clearArtworkCache();
    if (watcher_.isRunning()) watcher_.refresh();
}

void MusicSharing::follow() {
    if (state_.musicConsent == Consent::yes) return watcher_.start();
    watcher_.stop();
    if (!mutant(Mutant::musicOutlivesConsent)) presence_.setMusic(std::nullopt);
}

// Players tell one change several times; the partner need not hear it as often.
void MusicSharing::hear(const std::optional<NowPlaying>& playing) {
    const Announcer::Update update{announcer_};
    const auto& shared = presence_.music();
    if (playing && shared && Playback::saysTheSame(*shared, *playing)) return;
    presence_.setMusic(playing);
}

} // namespace lumaro
