// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Presence/Partner.h"

#include "LumaroCore/Presence/Playback.h"

#include <utility>

namespace lumaro {

void Partner::meet(PartnerSet online, PartnerID me) {
    auto seen = state_.presence;
    seen.isPartnerOnline = online.contains(other(me));
    if (!seen.isPartnerOnline) {
        seen.activity = Activity::idle;
        seen.nowPlaying.reset();
    }
    show(std::move(seen));
}

void Partner::take(const ServerMessage::Presence& presence, PartnerID me) {
    if (presence.from == me) return;
    auto seen = state_.presence;
    seen.activity = presence.activity;
    seen.nowPlaying = presence.nowPlaying;
    if (seen.nowPlaying) Playback::shorten(*seen.nowPlaying);
    if (seen.nowPlaying != state_.presence.nowPlaying) seen.nowPlayingHeardAt = clock_.now();
    seen.here = presence.here;
    // Whatever their program sent.
    if (seen.here) seen.here = seen.here->coarsened(seen.here->precision);
    show(std::move(seen));
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
