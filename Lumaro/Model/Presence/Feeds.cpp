// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Presence/Feeds.h"

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

std::optional<std::string> coverOf(const std::optional<NowPlaying>& playing) {
    return playing ? playing->artworkURL : std::nullopt;
}

bool hasWindowOf(PartnerID person, const Board& board) {
    return std::ranges::any_of(board.items, [person](const BoardItem& item) {
        const auto* const window = item.payload.as<LocationPayload>();
        return window != nullptr && window->slot == person;
    });
}

} // namespace

Feeds::Feeds(ArtworkFinder::Setup artwork, Ports ports, FeedsState& state, MediaCache& media, Connection& connection,
             Announcer& announcer)
    : state_(state), partner_({ports.clock, ports.defaults, ports.zone}, state, announcer),
      presence_(ports.sleeper, state, connection, announcer),
      covers_({ports.http, ports.background, ports.coverMaker, ports.log}, media, state, announcer),
      artwork_(std::move(artwork),
               {ports.players.artwork, ports.http, ports.sleeper, ports.background, ports.coverMaker}, covers_,
               state.looksForCovers),
      music_({{ports.players.scripts, ports.players.running, ports.players.notifications, artwork_, ports.sleeper,
               ports.clock, ports.log},
              ports.defaults},
             state, presence_, announcer),
      place_({{ports.positions, ports.geocoder, ports.zone, ports.sleeper, ports.clock, ports.log},
              ports.http,
              ports.defaults},
             state, presence_, announcer),
      hours_({ports.zone, ports.defaults}, state, presence_, announcer),
      seen_({ports.sleeper, ports.clock, ports.defaults}, state, presence_, announcer),
      city_({},
            {ports.http, ports.cityPainter, ports.cityMaker, ports.background, ports.sleeper, ports.clock, ports.log},
            media, state, announcer) {
}

void Feeds::stop() {
    music_.stop();
    place_.stop();
}

void Feeds::enter(const CoupleEndpoints& endpoints, const CoupleToken& token) {
    partner_.enter(token.coupleId);
    seen_.enter(token.coupleId);
    hours_.lookAgain();
    covers_.enter(endpoints, token);
    place_.enter(endpoints, token);
    city_.enter(endpoints, token);
    music_.forgetCovers();
}

void Feeds::leave() {
    partner_.forget();
    seen_.leave();
    covers_.leave();
    place_.leave();
    city_.leave();
    music_.forgetCovers();
    presence_.stop();
}

void Feeds::begin(PartnerSet online, PartnerID me) {
    partner_.meet(online, me);
    covers_.retryNow();
    presence_.sendSoon();
}

void Feeds::lookAgain() {
    place_.lookAgain();
    hours_.lookAgain();
    city_.lookAgain();
}

void Feeds::follow(AppChanges changes, const Board& board, PartnerID me) {
    if (changes.has(AppChange::partner) || changes.has(AppChange::ownPresence)) {
        covers_.want(coverOf(state_.ownPresence.nowPlaying), coverOf(state_.presence.nowPlaying));
    }
    if (changes.has(AppChange::board)) seen_.follow(board, me);
    if (changes.has(AppChange::partner) || changes.has(AppChange::board)) {
        const auto& here = state_.presence.here;
        const bool isSeen = here && isOnEarth({here->lat, here->lon}) && hasWindowOf(other(me), board);
        city_.want(isSeen ? std::optional{Coordinates{here->lat, here->lon}} : std::nullopt);
    }
}

} // namespace lumaro
