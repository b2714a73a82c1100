// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Presence/PlaceSharing.h"

#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Mutant.h"
#include "LumaroCore/Support/Wire.h"
#include "LumaroCore/Weather/FirstWorkingWeatherFetcher.h"
#include "LumaroCore/Weather/WorkerWeatherFetcher.h"

#include <utility>
#include <vector>

namespace lumaro {
namespace {

constexpr std::string_view sharesPlaceKey = "sharesPlace";
constexpr std::string_view precisionKey = "locationPrecision";
constexpr std::string_view bookKey = "locationPlaceBook";
constexpr std::string_view chosenKey = "locationByHand";

template <class T>
std::optional<T> keptIn(const UserDefaults& defaults, std::string_view key, Log& log) {
    const auto text = defaults.string(key);
    if (!text) return std::nullopt;
    auto value = Wire::decode<T>(*text);
    if (value) return std::move(*value);
    log.write(LogLevel::error, "place", "the setting " + std::string{key} + " cannot be read");
    return std::nullopt;
}

template <class T>
void keep(UserDefaults& defaults, std::string_view key, const T& value) {
    if (const auto text = Wire::encode(value)) defaults.setString(key, *text);
}

LocationWatcher::Settings settingsIn(const PlaceSharing::Ports& ports) {
    LocationWatcher::Settings settings;
    settings.precision =
        fromName<HerePrecision>(ports.defaults.string(precisionKey).value_or("")).value_or(settings.precision);
    settings.book = keptIn<PlaceBook>(ports.defaults, bookKey, ports.watcher.log).value_or(PlaceBook{});
    settings.chosen = keptIn<ChosenPlace>(ports.defaults, chosenKey, ports.watcher.log);
    if (settings.chosen && !isOnEarth(settings.chosen->position())) settings.chosen.reset();
    return settings;
}

} // namespace

PlaceSharing::PlaceSharing(Ports ports, PlaceState& state, PresenceSender& presence, Announcer& announcer)
    : ports_(ports), state_(state), presence_(presence), announcer_(announcer),
      watcher_(ports.watcher, settingsIn(ports), [this] { hear(); }) {
    state_.placeConsent = consentIn(ports_.defaults, sharesPlaceKey);
    state_.precision = watcher_.settings().precision;
    state_.chosenPlace = watcher_.settings().chosen;
}

// The board's server is asked first: it asks for both people, and shows the forecast service no person's address.
void PlaceSharing::enter(const CoupleEndpoints& endpoints, const CoupleToken& token) {
    leave();
    std::vector<std::unique_ptr<WeatherFetching>> fetchers;
    fetchers.push_back(
        std::make_unique<WorkerWeatherFetcher>(endpoints, token.authorizationHeaderValue(), ports_.http));
    auto service = ports_.defaults.string(forecastsKey).value_or(std::string{OpenMeteo::publicService});
    fetchers.push_back(std::make_unique<OpenMeteoFetcher>(std::move(service), ports_.http, ports_.watcher.clock));
    weather_ = std::make_unique<FirstWorkingWeatherFetcher>(std::move(fetchers));
    follow();
}

void PlaceSharing::leave() {
    watcher_.stop();
    weather_.reset();
    hear();
}

void PlaceSharing::share(bool shares) {
    const Announcer::Update update{announcer_};
    state_.placeConsent = consentOf(shares);
    ports_.defaults.setBoolean(sharesPlaceKey, shares);
    announcer_.changed(AppChange::place);
    follow();
}

void PlaceSharing::setPrecision(HerePrecision precision) {
    const Announcer::Update update{announcer_};
    ports_.defaults.setString(precisionKey, nameOf(precision));
    watcher_.setPrecision(precision);
    hear();
}

void PlaceSharing::choose(std::optional<ChosenPlace> place) {
    const Announcer::Update update{announcer_};
    if (place) {
        keep(ports_.defaults, chosenKey, *place);
    } else {
        ports_.defaults.remove(chosenKey);
    }
    watcher_.choose(std::move(place));
    hear();
}

void PlaceSharing::rename(std::string_view to) {
    const Announcer::Update update{announcer_};
    if (!watcher_.rename(to)) return announcer_.say("there is no room for another name");
    keep(ports_.defaults, bookKey, watcher_.settings().book);
    hear();
}

void PlaceSharing::follow() {
    if (state_.placeConsent == Consent::yes && weather_ != nullptr) return watcher_.start(*weather_);
    if (mutant(Mutant::placeOutlivesConsent)) return;
    watcher_.stop();
    hear();
}

void PlaceSharing::hear() {
    const Announcer::Update update{announcer_};
    const auto before = std::exchange(state_, PlaceState{.placeConsent = state_.placeConsent,
                                                         .precision = watcher_.settings().precision,
                                                         .chosenPlace = watcher_.settings().chosen,
                                                         .locationAccess = watcher_.access(),
                                                         .waitingForFixSince = watcher_.waitingSince(),
                                                         .isPlaceNamed = watcher_.isNamedByPerson()});
    if (state_ != before) announcer_.changed(AppChange::place);
    presence_.setPlace(watcher_.current());
}

} // namespace lumaro
