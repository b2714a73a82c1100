// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Weather/WorkerWeatherFetcher.h"

#include "LumaroCore/Support/Wire.h"
#include "LumaroCore/Weather/CoarsePosition.h"
#include "LumaroCore/Weather/HttpFetch.h"

namespace lumaro {
namespace {

WeatherFetching::Answer weatherOf(const HttpClient::Answer& answer) {
    const auto body = successfulBody(answer);
    if (!body) return std::unexpected(body.error());
    auto weather = Wire::decode<Weather>(*body);
    if (!weather) return std::unexpected(MalformedWeather{weather.error().path + ": " + weather.error().message});
    return *weather;
}

} // namespace

std::unique_ptr<WeatherFetching::Fetch> WorkerWeatherFetcher::weather(double latitude, double longitude, Then then) {
    HttpRequest request{.method = "GET",
                        .url = endpoints_.weather() + "?" +
                               queryOf(CoarsePosition::of({latitude, longitude}), "lat", "lon"),
                        .headers = {{"authorization", authorization_}, {"accept", "application/json"}},
                        .body = {},
                        .timeout = Seconds{60}};
    request.maxBodyBytes = std::size_t{64} * 1024;
    return fetched(http_, std::move(request),
                   [then = std::move(then)](const auto& answer) mutable { then(weatherOf(answer)); });
}

} // namespace lumaro
