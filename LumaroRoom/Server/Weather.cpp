// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/Weather.h"

#include "LumaroCore/Weather/OpenMeteo.h"

#include <charconv>
#include <utility>

namespace lumaro {
namespace {

// Beyond so many places the stale ones are forgotten, and none new is taken while all are fresh.
constexpr std::size_t maxPlaces = 4096;

std::optional<double> degrees(std::string_view text) {
    double value = 0;
    const auto [end, code] = std::from_chars(text.begin(), text.end(), value);
    return code == std::errc{} && end == text.end() ? std::optional{value} : std::nullopt;
}

} // namespace

std::optional<CoarsePosition> positionIn(std::string_view latitude, std::string_view longitude) {
    const auto north = degrees(latitude);
    const auto east = degrees(longitude);
    if (!north || !east || !isOnEarth({*north, *east})) return std::nullopt;
    return CoarsePosition::of({*north, *east});
}

WeatherService::WeatherService(std::string upstream, std::chrono::minutes age, HttpClient& http, WallClock& clock,
                               Log& log)
    : upstream_(std::move(upstream)), age_(age), http_(http), clock_(clock), log_(log) {
}

void WeatherService::ask(CoarsePosition position, Then then) {
    if (places_.size() >= maxPlaces && !places_.contains(position)) forgetOld();
    if (places_.size() >= maxPlaces && !places_.contains(position)) return then(std::unexpected(NoWeather{}));
    auto& place = places_[position];
    if (isFresh(place)) return then(*place.weather);
    place.waiting.push_back(std::move(then));
    if (place.call != nullptr) return;
    HttpRequest request{.method = "GET",
                        .url = OpenMeteo::url(upstream_, position),
                        .headers = {{"accept", "application/json"}},
                        .body = {},
                        .timeout = Seconds{10},
                        .maxBodyBytes = OpenMeteo::maxBodyBytes};
    place.call = http_.send(std::move(request),
                            [this, position](const HttpClient::Answer& answer) { answered(position, answer); });
}

void WeatherService::answered(CoarsePosition position, const HttpClient::Answer& answer) {
    auto& place = places_.at(position);
    const auto weather = OpenMeteo::weatherIn(answer, clock_.now());
    if (!weather) log_.write(LogLevel::error, "weather", textOf(weather.error()));
    place.weather = weather ? std::optional{*weather} : std::nullopt;
    // Whoever is told may ask again.
    const auto call = std::exchange(place.call, nullptr);
    auto waiting = std::exchange(place.waiting, {});
    const auto result =
        place.weather ? std::expected<Weather, NoWeather>{*place.weather} : std::unexpected(NoWeather{});
    if (!place.weather) places_.erase(position);
    for (auto& then : waiting) then(result);
}

bool WeatherService::isFresh(const Place& place) {
    if (!place.weather) return false;
    const auto age = clock_.now() - place.weather->sampledAt;
    return age >= Instant::duration::zero() && age < age_;
}

void WeatherService::forgetOld() {
    std::erase_if(places_, [&](const auto& entry) { return entry.second.call == nullptr && !isFresh(entry.second); });
}

} // namespace lumaro
