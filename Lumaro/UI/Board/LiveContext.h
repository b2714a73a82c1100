// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/AppState.h"
#include "LumaroCore/Places/Scenery.h"
#include "LumaroCore/Support/Coordinates.h"
#include "Widgets/Items/ItemPicture.h"

#include <QtCore/QString>
#include <QtCore/QTimeZone>

#include <functional>
#include <optional>

namespace lumaro {

/// What the pictures of a board depend on beside its items. A view of what others own, for the length of a call.
struct LiveContext {
    /// The picture of that id, as wide as the item wants it; null while it is not here.
    using Picture = std::function<ItemPicture(const UUID& id, Size points)>;
    /// What can be seen from a window at a point on the earth.
    using SceneryAt = std::function<Scenery(Coordinates)>;

    const BoardPresence& partner;
    const ClientMessage::Presence& own;
    const std::map<PartnerID, std::string>& names;
    PartnerID me = PartnerID::a;
    Instant now;
    const QTimeZone& zone; ///< of this device
    bool isFahrenheit = false;
    const MusicState& music;
    const PlaceState& place;
    const CoverState& covers;
    const CityState& city;
    const Picture& picture;
    SceneryAt sceneryAt = {}; ///< none where there is no table of places

    bool isMe(PartnerID slot) const { return slot == me; }
    const std::optional<NowPlaying>& nowPlaying(PartnerID slot) const {
        return isMe(slot) ? own.nowPlaying : partner.nowPlaying;
    }
    /// When that was heard, by this device's clock.
    Instant nowPlayingHeardAt(PartnerID slot) const {
        return isMe(slot) && own.nowPlaying ? own.nowPlaying->sampledAt : partner.nowPlayingHeardAt;
    }
    const std::optional<UUID>& cover(PartnerID slot) const {
        return isMe(slot) ? covers.ownCover : covers.partnerCover;
    }
    Scenery scenery(Coordinates point) const;
    const std::optional<Here>& here(PartnerID slot) const { return isMe(slot) ? own.here : partner.here; }
};

/// Their name; empty as long as it is not known.
QString knownName(PartnerID slot, const LiveContext& live);
/// What people call the person: "you", their name, or "they" as long as it is not known.
QString personName(PartnerID slot, const LiveContext& live);

} // namespace lumaro
