// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/Weather.h"

#include "LumaroCore/Support/JsonCodec.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace lumaro {
namespace {

// Beyond so many places the stale ones are forgotten, and none new is taken while all are fresh.
constexpr std::size_t maxPlaces = 4096;

// The forecast's own names.
struct CurrentReadings {
    double temperature = 0;
    std::optional<double> feels;
    double isDay = 0;
    std::int64_t code = 0;
    std::optional<double> cloudLow;
    std::optional<double> cloudMid;
    std::optional<double> cloudHigh;
    std::optional<double> visibility;
    std::optional<double> windDirection;
    std::optional<double> windSpeed;

    static constexpr auto fields() {
        using Self = CurrentReadings;
        return std::tuple{Field{"temperature_2m", &Self::temperature},
                          Field{"apparent_temperature", &Self::feels},
                          Field{"is_day", &Self::isDay},
                          Field{"weather_code", &Self::code},
                          Field{"cloud_cover_low", &Self::cloudLow},
                          Field{"cloud_cover_mid", &Self::cloudMid},
                          Field{"cloud_cover_high", &Self::cloudHigh},
                          Field{"visibility", &Self::visibility},
                          Field{"wind_direction_10m", &Self::windDirection},
                          Field{"wind_speed_10m", &Self::windSpeed}};
    }
};

using Extremes = std::optional<std::vector<std::optional<double>>>;

struct DailyReadings {
    Extremes highest;
    Extremes lowest;

    static constexpr auto fields() {
        return std::tuple{Field{"temperature_2m_max", &DailyReadings::highest},
                          Field{"temperature_2m_min", &DailyReadings::lowest}};
    }
};

struct Forecast {
    CurrentReadings current;
    DailyReadings daily;

    static constexpr auto fields() {
        return std::tuple{Field{"current", &Forecast::current}, Field{"daily", &Forecast::daily}};
    }
};

std::optional<double> within(std::optional<double> reading, double low, double high) {
    return reading && *reading >= low && *reading <= high ? reading : std::nullopt;
}

std::optional<double> firstOf(const Extremes& readings) {
    return readings && !readings->empty() ? readings->front() : std::nullopt;
}

std::optional<int> hundredths(std::string_view degrees, double limit) {
    double value = 0;
    const auto [end, code] = std::from_chars(degrees.begin(), degrees.end(), value);
    if (code != std::errc{} || end != degrees.end() || !(std::abs(value) <= limit)) return std::nullopt;
    return static_cast<int>(std::round(value * 100));
}

void appendDegrees(std::string& url, int hundredths) {
    std::array<char, 16> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), hundredths / 100.0).ptr;
    url.append(text.data(), end);
}

} // namespace

std::optional<CoarsePosition> CoarsePosition::parse(std::string_view latitude, std::string_view longitude) {
    const auto north = hundredths(latitude, 90);
    const auto east = hundredths(longitude, 180);
    if (!north || !east) return std::nullopt;
    return CoarsePosition{*north, *east};
}

std::string forecastURL(std::string_view upstream, CoarsePosition position) {
    std::string url{upstream};
    url.append("/v1/forecast?latitude=");
    appendDegrees(url, position.latitude);
    url.append("&longitude=");
    appendDegrees(url, position.longitude);
    url.append("&current=temperature_2m,apparent_temperature,is_day,weather_code,cloud_cover_low,cloud_cover_mid,"
               "cloud_cover_high,visibility,wind_direction_10m,wind_speed_10m"
               "&daily=temperature_2m_max,temperature_2m_min&timezone=auto&forecast_days=1");
    return url;
}

std::optional<Weather> weatherIn(std::string_view forecast, Instant sampledAt) {
    const auto read = Wire::decode<Forecast>(forecast);
    if (!read) return std::nullopt;
    const auto& now = read->current;
    return Weather{.tempC = now.temperature,
                   .feelsC = now.feels,
                   .code = now.code,
                   .isDay = now.isDay == 1,
                   .hiC = firstOf(read->daily.highest),
                   .loC = firstOf(read->daily.lowest),
                   .cloudLow = within(now.cloudLow, 0, 100),
                   .cloudMid = within(now.cloudMid, 0, 100),
                   .cloudHigh = within(now.cloudHigh, 0, 100),
                   .visibilityM = within(now.visibility, 0, 1'000'000),
                   .windDeg = within(now.windDirection, 0, 360),
                   .windKmh = within(now.windSpeed, 0, 500),
                   .sampledAt = sampledAt};
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
                        .url = forecastURL(upstream_, position),
                        .headers = {{"accept", "application/json"}},
                        .body = {},
                        .timeout = Seconds{10}};
    place.call = http_.send(std::move(request),
                            [this, position](const HttpClient::Answer& answer) { answered(position, answer); });
}

void WeatherService::answered(CoarsePosition position, const HttpClient::Answer& answer) {
    auto& place = places_.at(position);
    place.weather = read(answer);
    // Whoever is told may ask again.
    const auto call = std::exchange(place.call, nullptr);
    auto waiting = std::exchange(place.waiting, {});
    const auto result =
        place.weather ? std::expected<Weather, NoWeather>{*place.weather} : std::unexpected(NoWeather{});
    if (!place.weather) places_.erase(position);
    for (auto& then : waiting) then(result);
}

std::optional<Weather> WeatherService::read(const HttpClient::Answer& answer) {
    if (!answer) {
        log_.write(LogLevel::error, "weather", "no answer: " + answer.error().message);
        return std::nullopt;
    }
    if (!answer->isSuccess()) {
        log_.write(LogLevel::error, "weather", "answered with status " + std::to_string(answer->status));
        return std::nullopt;
    }
    auto weather = weatherIn(answer->body, clock_.now());
    if (!weather) log_.write(LogLevel::error, "weather", "the answer is no forecast");
    return weather;
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
