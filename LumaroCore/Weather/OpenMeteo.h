// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/HttpClient.h"
#include "LumaroCore/Support/WallClock.h"
#include "LumaroCore/Weather/CoarsePosition.h"
#include "LumaroCore/Weather/WeatherFetching.h"

#include <cstddef>
#include <expected>
#include <string>
#include <string_view>
#include <utility>

namespace lumaro {

/// The forecast service of open-meteo.com, as the board's server and this program ask it.
namespace OpenMeteo {

inline constexpr std::string_view publicService = "https://api.open-meteo.com";
/// An answer for one place and one day has about a kilobyte.
inline constexpr std::size_t maxBodyBytes = std::size_t{64} * 1024;

/// Where the weather of a place is asked for. `service` is the URL that the path is put behind.
std::string url(std::string_view service, CoarsePosition position);

/// The weather in an answer's body. A reading outside its bounds, null or missing is left out; only temperature, code
/// and day must be there.
std::expected<Weather, MalformedWeather> weatherIn(std::string_view body, Instant sampledAt);

/// The weather in an answer, whatever came.
WeatherFetching::Answer weatherIn(const HttpClient::Answer& answer, Instant sampledAt);

} // namespace OpenMeteo

/// Asks that service itself.
class OpenMeteoFetcher final : public WeatherFetching {
public:
    /// Both ports outlive the fetcher.
    OpenMeteoFetcher(std::string service, HttpClient& http, WallClock& clock)
        : service_(std::move(service)), http_(http), clock_(clock) {}

    std::string url(double latitude, double longitude) const;
    [[nodiscard]] std::unique_ptr<Fetch> weather(double latitude, double longitude, Then then) override;

private:
    std::string service_;
    HttpClient& http_;
    WallClock& clock_;
};

} // namespace lumaro
