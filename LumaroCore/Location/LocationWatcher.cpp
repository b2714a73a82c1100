// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Location/LocationWatcher.h"

#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Wire.h"

namespace lumaro {

LocationWatcher::LocationWatcher(Ports ports, Settings settings, Updates updates)
    : ports_(ports), settings_(std::move(settings)), updates_(std::move(updates)),
      namer_(ports.geocoder, ports.sleeper, ports.clock, settings_.namingInterval, [this] { publish(); }) {
}

void LocationWatcher::start(WeatherFetching& weather) {
    if (isRunning()) return;
    weatherSource_ = &weather;
    look();
}

void LocationWatcher::stop() {
    weatherSource_ = nullptr;
    nextLook_.reset();
    search_.reset();
    waitingSince_.reset();
    access_ = LocationAccess::notDetermined;
    forgetStay();
    current_.reset();
}

void LocationWatcher::refresh() {
    if (isRunning()) nextLook_ = ports_.sleeper.wait(refreshPause, [this] { look(); });
}

void LocationWatcher::setPrecision(HerePrecision precision) {
    if (settings_.precision == precision) return;
    settings_.precision = precision;
    if (!isRunning()) return;
    publish();
    search_.reset();
    look();
}

void LocationWatcher::choose(std::optional<ChosenPlace> place) {
    if (settings_.chosen == place) return;
    settings_.chosen = std::move(place);
    if (!isRunning()) return;
    search_.reset();
    waitingSince_.reset();
    anchor_.reset();
    namer_.forget();
    // Where the system's position takes its time, the place that was chosen is told no more.
    if (!settings_.chosen) publish();
    look();
}

bool LocationWatcher::rename(std::string_view to) {
    if (!anchor_ || !settings_.book.rename(anchor_->position.latitude, anchor_->position.longitude, to)) return false;
    publish();
    return true;
}

bool LocationWatcher::isNamedByPerson() const {
    return anchor_ && settings_.book.name(anchor_->position.latitude, anchor_->position.longitude);
}

void LocationWatcher::look() {
    nextLook_ = ports_.sleeper.wait(settings_.refreshInterval, [this] { look(); });
    if (settings_.chosen) return stayAt(settings_.chosen->position());
    if (search_) return;
    if (!anchor_ && !waitingSince_) {
        waitingSince_ = ports_.clock.now();
        tell();
    }
    search_ = ports_.positions.search(settings_.precision, [this](const auto& answer) { found(answer); });
}

void LocationWatcher::found(const PositionSource::Answer& answer) {
    search_.reset();
    access_ = answer.access;
    if (answer.position && isOnEarth(*answer.position)) return stayAt(*answer.position);
    if (access_ == LocationAccess::authorized) return tell();
    ports_.log.write(LogLevel::info, "place", "no position: " + std::string{nameOf(access_)});
    waitingSince_.reset();
    forgetStay();
    current_.reset();
    tell();
}

void LocationWatcher::stayAt(Coordinates position) {
    const auto now = Wire::truncatedToMilliseconds(ports_.clock.now());
    waitingSince_.reset();
    if (!anchor_ || LocationLogic::hasMoved(anchor_->position, position)) {
        anchor_ = {position, now};
        namer_.forget();
    }
    sampledAt_ = now;
    if (!settings_.chosen) namer_.name(anchor_->position);
    askForWeather();
    publish();
}

void LocationWatcher::forgetStay() {
    anchor_.reset();
    namer_.forget();
    weather_.reset();
    fetch_.reset();
}

void LocationWatcher::askForWeather() {
    const auto at = anchor_->position;
    const auto place = CoarsePosition::of(at);
    if (weather_ && metresBetween(weather_->at, at) > weatherReachMetres) weather_.reset();
    if (fetch_ && asked_ == place) return;
    if (weather_ && CoarsePosition::of(weather_->at) == place) {
        const auto age = ports_.clock.now() - weather_->heardAt;
        if (age >= Instant::duration::zero() && age < weatherAge) return;
    }
    asked_ = place;
    const auto coarse = place.degrees();
    fetch_ =
        weatherSource_->weather(coarse.latitude, coarse.longitude, [this, at](const WeatherFetching::Answer& answer) {
            fetch_.reset();
            if (!answer) return ports_.log.write(LogLevel::info, "place", "no weather: " + textOf(answer.error()));
            weather_ = {*answer, at, ports_.clock.now()};
            publish();
        });
}

void LocationWatcher::publish() {
    if (!anchor_) {
        current_.reset();
        return tell();
    }
    const auto facts = settings_.chosen ? PlaceFacts{.subLocality = std::nullopt,
                                                     .locality = settings_.chosen->name,
                                                     .name = std::nullopt,
                                                     .timeZone = settings_.chosen->zone}
                                        : namer_.facts();
    auto here =
        LocationLogic::here(*anchor_, facts, settings_.book, settings_.precision, sampledAt_, ports_.zone.identifier());
    if (weather_) here.weather = weather_->weather;
    if (!mustPublish(here)) return tell();
    current_ = std::move(here);
    tell();
}

bool LocationWatcher::mustPublish(const Here& here) const {
    if (!current_ || !here.isSameSpot(*current_) || here.tz != current_->tz || here.weather != current_->weather)
        return true;
    const auto age = here.sampledAt - current_->sampledAt;
    return age < Instant::duration::zero() || age >= publishedAge;
}

void LocationWatcher::tell() const {
    if (updates_) updates_();
}

} // namespace lumaro
