// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Presence/Weather.h"

#include <expected>
#include <functional>
#include <memory>
#include <string>
#include <variant>

namespace lumaro {

/// The source could not be reached.
struct NoWeatherAnswer {
    std::string message; ///< for the log
};
/// It answered with another status than success.
struct BadWeatherResponse {
    int status = 0;
};
/// It answered with something that is no weather.
struct MalformedWeather {
    std::string message; ///< with the place in the answer, "$.current.weather_code"
};
/// There was no source, or none had the weather.
struct NobodyAnswered {};

using WeatherFault = std::variant<NoWeatherAnswer, BadWeatherResponse, MalformedWeather, NobodyAnswered>;

/// One line for the log.
std::string textOf(const WeatherFault& fault);

/// A source of the weather at a place. It learns the place to two decimals of a degree, about a kilometre, and no
/// closer.
class WeatherFetching {
public:
    /// A question under way. Dropping it cancels it: its `then` is not called any more.
    class Fetch {
    public:
        Fetch() = default;
        Fetch(const Fetch&) = delete;
        Fetch& operator=(const Fetch&) = delete;
        virtual ~Fetch() = default;
    };
    using Answer = std::expected<Weather, WeatherFault>;
    using Then = std::move_only_function<void(Answer)>;

    WeatherFetching() = default;
    WeatherFetching(const WeatherFetching&) = delete;
    WeatherFetching& operator=(const WeatherFetching&) = delete;
    virtual ~WeatherFetching() = default;

    /// In degrees. Calls `then` once, on the caller's thread; from within this call only when there is nobody to ask.
    /// `then` may drop its own fetch.
    [[nodiscard]] virtual std::unique_ptr<Fetch> weather(double latitude, double longitude, Then then) = 0;
};

} // namespace lumaro
