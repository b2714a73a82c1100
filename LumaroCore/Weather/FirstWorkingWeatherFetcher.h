// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Weather/WeatherFetching.h"

#include <memory>
#include <utility>
#include <vector>

namespace lumaro {

/// Asks one source after the other until one has the weather. Why the earlier ones had none is not told.
class FirstWorkingWeatherFetcher final : public WeatherFetching {
public:
    explicit FirstWorkingWeatherFetcher(std::vector<std::unique_ptr<WeatherFetching>> fetchers)
        : fetchers_(std::move(fetchers)) {}

    /// Outlives its fetches.
    [[nodiscard]] std::unique_ptr<Fetch> weather(double latitude, double longitude, Then then) override;

private:
    class Round;

    std::vector<std::unique_ptr<WeatherFetching>> fetchers_;
};

} // namespace lumaro
