// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/News/Announcer.h"
#include "Lumaro/Model/Presence/Consent.h"
#include "Lumaro/Model/Presence/PresenceSender.h"
#include "LumaroCore/Location/LocationWatcher.h"
#include "LumaroCore/Protocol/CoupleEndpoints.h"
#include "LumaroCore/Protocol/CoupleToken.h"
#include "LumaroCore/Services/UserDefaults.h"
#include "LumaroCore/Support/HttpClient.h"
#include "LumaroCore/Weather/OpenMeteo.h"

#include <memory>
#include <optional>
#include <string_view>

namespace lumaro {

struct PlaceState {
    Consent placeConsent = Consent::notAsked;
    HerePrecision precision = HerePrecision::neighbourhood;
    std::optional<ChosenPlace> chosenPlace; ///< the person says that they are there
    LocationAccess locationAccess = LocationAccess::notDetermined;
    std::optional<Instant> waitingForFixSince; ///< the system has not found the computer yet
    bool isPlaceNamed = false;                 ///< by the person

    bool operator==(const PlaceState&) const = default;
};

/// The setting of the service that is asked for the weather where the board's server has none; a URL.
inline constexpr std::string_view forecastsKey = "forecastsURL";

/// Shares where this computer is, if the person said so. Keeps what they said, and their names for places.
class PlaceSharing {
public:
    /// All outlive this.
    struct Ports {
        LocationWatcher::Ports watcher;
        HttpClient& http;
        UserDefaults& defaults;
    };
    PlaceSharing(Ports ports, PlaceState& state, PresenceSender& presence, Announcer& announcer);
    PlaceSharing(const PlaceSharing&) = delete;
    PlaceSharing& operator=(const PlaceSharing&) = delete;
    ~PlaceSharing() = default;

    /// The board whose people may see it. The position is looked for from now on where it is shared, and only while
    /// there is somebody to share it with.
    void enter(const CoupleEndpoints& endpoints, const CoupleToken& token);
    void leave();
    void stop() { watcher_.stop(); }
    /// The computer woke up, or has another network.
    void lookAgain() { watcher_.refresh(); }

    void share(bool shares);
    void setPrecision(HerePrecision precision);
    /// "i'm in …"; none: the system finds the position.
    void choose(std::optional<ChosenPlace> place);
    /// A name of the person's own for the place they are at; an empty one forgets it. Says so when there is no room for
    /// another.
    void rename(std::string_view to);

private:
    void follow();
    void hear();

    Ports ports_;
    PlaceState& state_;
    PresenceSender& presence_;
    Announcer& announcer_;
    std::unique_ptr<WeatherFetching> weather_; ///< null without a board
    LocationWatcher watcher_;
};

} // namespace lumaro
