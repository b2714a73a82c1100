// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/HttpClient.h"
#include "LumaroCore/Support/Log.h"
#include "LumaroCore/Support/WallClock.h"
#include "LumaroCore/Weather/CoarsePosition.h"
#include "LumaroCore/Weather/WeatherFetching.h"

#include <chrono>
#include <expected>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

/// Reads two numbers in degrees; none when they are no place on earth.
std::optional<CoarsePosition> positionIn(std::string_view latitude, std::string_view longitude);

struct NoWeather {};

/// Asks the forecast service for the weather: not again while an answer is fresh, and once for all who ask at a time.
/// One thread, that of its `HttpClient`.
class WeatherService {
public:
    using Then = std::move_only_function<void(std::expected<Weather, NoWeather>)>;

    /// The ports outlive the service.
    WeatherService(std::string upstream, std::chrono::minutes age, HttpClient& http, WallClock& clock, Log& log);

    /// Calls `then` at once when the weather is known, otherwise when the service has answered.
    void ask(CoarsePosition position, Then then);

private:
    struct Place {
        std::optional<Weather> weather;
        std::vector<Then> waiting;
        std::unique_ptr<HttpClient::Call> call;
    };
    void answered(CoarsePosition position, const HttpClient::Answer& answer);
    bool isFresh(const Place& place);
    void forgetOld();

    std::string upstream_;
    std::chrono::minutes age_;
    HttpClient& http_;
    WallClock& clock_;
    Log& log_;
    std::map<CoarsePosition, Place> places_;
};

} // namespace lumaro
