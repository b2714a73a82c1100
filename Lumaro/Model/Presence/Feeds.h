// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Presence/ArtworkFinder.h"
#include "Lumaro/Model/Presence/CityWindow.h"
#include "Lumaro/Model/Presence/Covers.h"
#include "Lumaro/Model/Presence/HoursSharing.h"
#include "Lumaro/Model/Presence/MusicSharing.h"
#include "Lumaro/Model/Presence/Partner.h"
#include "Lumaro/Model/Presence/PlaceSharing.h"
#include "Lumaro/Model/Presence/PresenceSender.h"
#include "Lumaro/Model/Presence/SeenSharing.h"
#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/Music/MusicPlayers.h"

namespace lumaro {

struct FeedsState : PartnerState,
                    OwnPresenceState,
                    MusicState,
                    CoverState,
                    PlaceState,
                    HoursState,
                    SeenState,
                    CityState {};

/// What the two see of each other on the live cards: what this person shares, and what came from the partner.
class Feeds {
public:
    /// All outlive this.
    struct Ports {
        Sleeper& sleeper;
        WallClock& clock;
        Log& log;
        HttpClient& http;
        BackgroundRunner& background;
        UserDefaults& defaults;
        MusicPlayers players;
        CoverMaker& coverMaker;
        CityPainter& cityPainter;
        CityPictureMaker& cityMaker;
        PositionSource& positions;
        ReverseGeocoder& geocoder;
        SystemZone& zone;
    };
    Feeds(ArtworkFinder::Setup artwork, Ports ports, FeedsState& state, MediaCache& media, Connection& connection,
          Announcer& announcer);
    Feeds(const Feeds&) = delete;
    Feeds& operator=(const Feeds&) = delete;
    ~Feeds() = default;

    PresenceSender& presence() { return presence_; }
    MusicSharing& music() { return music_; }
    PlaceSharing& place() { return place_; }
    HoursSharing& hours() { return hours_; }
    SeenSharing& seen() { return seen_; }
    Partner& partner() { return partner_; }

    void start() { music_.start(); }
    void stop();
    void enter(const CoupleEndpoints& endpoints, const CoupleToken& token);
    void leave();
    /// The room says who is there: it knows nothing of this device yet.
    void begin(PartnerSet online, PartnerID me);
    void lookAgain();
    /// What follows from changes of others. The board is the one that hangs here, as the person in slot `me` sees it.
    void follow(AppChanges changes, const Board& board, PartnerID me);

private:
    FeedsState& state_;
    Partner partner_;
    PresenceSender presence_;
    Covers covers_;
    ArtworkFinder artwork_;
    MusicSharing music_;
    PlaceSharing place_;
    HoursSharing hours_;
    SeenSharing seen_;
    CityWindow city_;
};

} // namespace lumaro
