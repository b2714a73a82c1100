// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Location/ChosenPlace.h"
#include "LumaroCore/Location/LocationLogic.h"
#include "LumaroCore/Location/PlaceNamer.h"
#include "LumaroCore/Location/PositionSource.h"
#include "LumaroCore/Services/SystemZone.h"
#include "LumaroCore/Support/Log.h"
#include "LumaroCore/Support/Sleeper.h"
#include "LumaroCore/Support/WallClock.h"
#include "LumaroCore/Weather/CoarsePosition.h"
#include "LumaroCore/Weather/WeatherFetching.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace lumaro {

/// Tells where this computer is, by what name, and what the weather is there.
///
/// It looks for the position when it starts and then every `refreshInterval`; a search that finds nothing goes on. What
/// is found begins a stay, which lasts until the computer is farther than 150 m from where it began: the place told is
/// that of the beginning. It publishes at once when spot, name, precision, zone or weather changed, and else every half
/// hour, so that others see that the place is of now. The weather is asked for with the position, at most every ten
/// minutes for one place, and the last one is kept for as long as it comes from near. Where the system tells no
/// position any more, nothing is told.
///
/// The position is in memory alone, and in no line of the log. Used on one thread; dropping it is its end.
class LocationWatcher {
public:
    /// All outlive the watcher.
    struct Ports {
        PositionSource& positions;
        ReverseGeocoder& geocoder;
        SystemZone& zone;
        Sleeper& sleeper;
        WallClock& clock;
        Log& log;
    };
    struct Settings {
        Seconds refreshInterval{240};
        Seconds namingInterval{60}; ///< at least, between two questions to the geocoder
        HerePrecision precision = HerePrecision::neighbourhood;
        PlaceBook book;
        std::optional<ChosenPlace> chosen; ///< the position is not looked for
    };
    /// Hears that `current`, `access` or `waitingSince` changed. It may call the watcher.
    using Updates = std::function<void()>;

    static constexpr Seconds refreshPause{2};
    static constexpr std::chrono::minutes weatherAge{10};
    static constexpr std::chrono::minutes publishedAge{30};
    static constexpr double weatherReachMetres = 25'000;

    LocationWatcher(Ports ports, Settings settings, Updates updates);
    LocationWatcher(const LocationWatcher&) = delete;
    LocationWatcher& operator=(const LocationWatcher&) = delete;
    ~LocationWatcher() = default;

    /// Nothing when it runs already. The fetcher outlives the run.
    void start(WeatherFetching& weather);
    /// Forgets where it was, and publishes nothing any more.
    void stop();
    bool isRunning() const { return weatherSource_ != nullptr; }
    /// Looks for the position as soon as the network had time to settle: the computer woke up, or has another network.
    void refresh();

    void setPrecision(HerePrecision precision);
    /// None: the system's position counts again.
    void choose(std::optional<ChosenPlace> place);
    /// Names the place of this stay. False when there is none, or no room for another name.
    bool rename(std::string_view to);

    /// The last publication.
    const std::optional<Here>& current() const { return current_; }
    LocationAccess access() const { return access_; }
    /// When the search that has found nothing yet began.
    std::optional<Instant> waitingSince() const { return waitingSince_; }
    const Settings& settings() const { return settings_; }
    /// Whether this place has a name of the person's own.
    bool isNamedByPerson() const;

private:
    void look();
    void found(const PositionSource::Answer& answer);
    void stayAt(Coordinates position);
    void forgetStay();
    void askForWeather();
    void publish();
    bool mustPublish(const Here& here) const;
    void tell() const;

    Ports ports_;
    Settings settings_;
    Updates updates_;
    WeatherFetching* weatherSource_ = nullptr; ///< null while it does not run
    std::unique_ptr<Sleeper::Wait> nextLook_;
    std::unique_ptr<PositionSource::Search> search_;
    LocationAccess access_ = LocationAccess::notDetermined;
    std::optional<Instant> waitingSince_;
    std::optional<Here> current_;

    // Of the stay.
    std::optional<LocationAnchor> anchor_;
    Instant sampledAt_;
    PlaceNamer namer_;

    struct KnownWeather {
        Weather weather;
        Coordinates at;
        Instant heardAt;
    };
    std::optional<KnownWeather> weather_;
    CoarsePosition asked_; ///< what `fetch_` asks for
    std::unique_ptr<WeatherFetching::Fetch> fetch_;
};

} // namespace lumaro
