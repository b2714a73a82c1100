// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Weather/OpenMeteo.h"

#include "LumaroCore/Support/JsonCodec.h"
#include "LumaroCore/Weather/HttpFetch.h"

#include <optional>
#include <vector>

namespace lumaro {
namespace {

// The service's own names.
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

} // namespace

namespace OpenMeteo {

std::string url(std::string_view service, CoarsePosition position) {
    std::string url{service};
    url.append("/v1/forecast?").append(queryOf(position, "latitude", "longitude"));
    url.append("&current=temperature_2m,apparent_temperature,is_day,weather_code,cloud_cover_low,cloud_cover_mid,"
               "cloud_cover_high,visibility,wind_direction_10m,wind_speed_10m"
               "&daily=temperature_2m_max,temperature_2m_min&timezone=auto&forecast_days=1");
    return url;
}

std::expected<Weather, MalformedWeather> weatherIn(std::string_view body, Instant sampledAt) {
    const auto read = Wire::decode<Forecast>(body);
    if (!read) return std::unexpected(MalformedWeather{read.error().path + ": " + read.error().message});
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

WeatherFetching::Answer weatherIn(const HttpClient::Answer& answer, Instant sampledAt) {
    const auto body = successfulBody(answer);
    if (!body) return std::unexpected(body.error());
    return weatherIn(*body, sampledAt);
}

} // namespace OpenMeteo

std::string OpenMeteoFetcher::url(double latitude, double longitude) const {
    return OpenMeteo::url(service_, CoarsePosition::of({latitude, longitude}));
}

std::unique_ptr<WeatherFetching::Fetch> OpenMeteoFetcher::weather(double latitude, double longitude, Then then) {
    HttpRequest request{
        .method = "GET", .url = url(latitude, longitude), .headers = {{"accept", "application/json"}}, .body = {}};
    request.maxBodyBytes = OpenMeteo::maxBodyBytes;
    return fetched(http_, std::move(request), [this, then = std::move(then)](const auto& answer) mutable {
        then(OpenMeteo::weatherIn(answer, Wire::truncatedToMilliseconds(clock_.now())));
    });
}

} // namespace lumaro
