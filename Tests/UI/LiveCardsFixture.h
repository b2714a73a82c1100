// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Board/CardFaces.h"
#include "Lumaro/UI/Board/LiveCards.h"

#include <QtCore/QTimeZone>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace lumaro {

using namespace std::chrono_literals;

inline const LiveContext::Picture noPicture = [](const UUID&, Size) { return ItemPicture{}; };

/// What live cards show at an instant, of Ana and her partner Bo.
struct LiveCardsFixture : testing::Test {
    // 2026-09-21 14:13:20 UTC
    Instant now{1'790'000'000s};
    BoardPresence partner;
    ClientMessage::Presence own;
    MusicState music{.musicConsent = Consent::yes};
    PlaceState place;
    CoverState covers;
    CityState city;
    const LiveContext::Picture* picture = &noPicture;
    std::map<PartnerID, std::string> names{{PartnerID::a, "ana"}, {PartnerID::b, "bo"}};
    QTimeZone zone{QByteArray{"Europe/Berlin"}};

    LiveContext live() const {
        return {.partner = partner,
                .own = own,
                .names = names,
                .me = PartnerID::a,
                .now = now,
                .zone = zone,
                .music = music,
                .place = place,
                .covers = covers,
                .city = city,
                .picture = *picture};
    }
    BoardItem item(Payload payload) const {
        BoardItem made;
        made.author = PartnerID::b;
        made.createdAt = now - 1h;
        made.payload = std::move(payload);
        return made;
    }
    template <class Face>
    Face face(Payload payload) const {
        return *faceOf(item(std::move(payload)), live()).as<Face>();
    }
    void partnerPlays(std::int64_t progressMs, std::int64_t durationMs) {
        partner.nowPlaying = NowPlaying{.isPlaying = true,
                                        .progressMs = progressMs,
                                        .sampledAt = now,
                                        .durationMs = durationMs,
                                        .title = "harbour lights",
                                        .artist = "the paper boats",
                                        .artworkURL = std::nullopt};
        partner.nowPlayingHeardAt = now;
    }
    WindowFace window() const { return face<WindowFace>(LocationPayload{PartnerID::b}); }
    ClocksFace clocks() const { return face<ClocksFace>(TimezonesPayload{}); }
    MusicFace record(PartnerID slot = PartnerID::b) const { return face<MusicFace>(NowPlayingSlotPayload{slot}); }
    std::optional<Instant> recordChanges() const {
        return nextChange(item(NowPlayingSlotPayload{PartnerID::b}), live());
    }
    void partnerIsIn(const char* zoneName, Instant sampledAt) {
        Weather weather;
        weather.tempC = 16.6;
        weather.code = 95;
        weather.isDay = false;
        weather.sampledAt = sampledAt;
        Here here;
        here.lat = 38.71;
        here.lon = -9.14;
        here.label = "alfama";
        here.tz = zoneName;
        here.sampledAt = sampledAt;
        here.weather = weather;
        partner.here = here;
    }
};

} // namespace lumaro
