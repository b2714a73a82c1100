// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Presence/Partner.h"

#include "LumaroCore/Presence/Playback.h"

#include <algorithm>
#include <utility>

namespace lumaro {

Partner::Partner(Ports ports, PartnerState& state, Announcer& announcer)
    : ports_(ports), state_(state), announcer_(announcer), zone_(ports.defaults, "partnerZone"),
      seen_(ports.defaults, "partnerHasSeen") {
}

void Partner::enter(const std::string& coupleId) {
    auto known = state_.presence;
    known.zone = zone_.enter(coupleId);
    if (known.zone && !ports_.zones.isKnown(*known.zone)) known.zone.reset();
    known.seen = instantIn(seen_.enter(coupleId));
    show(std::move(known));
}

void Partner::meet(PartnerSet online, PartnerID me) {
    auto seen = state_.presence;
    seen.isPartnerOnline = online.contains(other(me));
    if (!seen.isPartnerOnline) {
        seen.activity = Activity::idle;
        seen.nowPlaying.reset();
    }
    show(std::move(seen));
}

void Partner::take(const ServerMessage::Presence& presence, PartnerID me, std::optional<Instant> newestOwn) {
    if (presence.from == me) return;
    auto seen = state_.presence;
    seen.activity = presence.activity;
    seen.nowPlaying = presence.nowPlaying;
    if (seen.nowPlaying) Playback::shorten(*seen.nowPlaying);
    if (seen.nowPlaying != state_.presence.nowPlaying) seen.nowPlayingHeardAt = ports_.clock.now();
    seen.here = presence.here;
    // Whatever their program sent.
    if (seen.here) seen.here = seen.here->coarsened(seen.here->precision);
    remember(presence, newestOwn, seen);
    show(std::move(seen));
}

// A presence without a zone takes it back; one without "seen" says nothing of what they had seen before.
void Partner::remember(const ServerMessage::Presence& presence, std::optional<Instant> newestOwn, BoardPresence& seen) {
    seen.zone = presence.zone && ports_.zones.isKnown(*presence.zone) ? presence.zone : std::nullopt;
    if (seen.zone != state_.presence.zone) seen.zone ? zone_.keep(*seen.zone) : zone_.forget();
    if (!presence.seen || !newestOwn) return;
    const auto until = std::min(*presence.seen, *newestOwn);
    if (seen.seen && until <= *seen.seen) return;
    seen.seen = until;
    seen_.keep(textOf(until));
}

void Partner::hide() {
    BoardPresence known;
    known.zone = state_.presence.zone;
    known.seen = state_.presence.seen;
    show(std::move(known));
}

void Partner::forgetPerson() {
    auto known = state_.presence;
    if (std::exchange(known.zone, std::nullopt)) zone_.forget();
    if (std::exchange(known.seen, std::nullopt)) seen_.forget();
    show(std::move(known));
}

void Partner::forget() {
    forgetPerson();
    show({});
}

void Partner::take(const ServerMessage::Calendar& calendar) {
    auto seen = state_.presence;
    seen.calendarStatus[calendar.slot] = calendar.status;
    if (calendar.day) {
        seen.calendar[calendar.slot] = *calendar.day;
    } else {
        seen.calendar.erase(calendar.slot);
    }
    show(std::move(seen));
}

void Partner::show(BoardPresence presence) {
    if (state_.presence == presence) return;
    state_.presence = std::move(presence);
    announcer_.changed(AppChange::partner);
}

} // namespace lumaro
