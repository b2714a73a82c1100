// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Protocol/CoupleEndpoints.h"
#include "LumaroCore/Support/HttpClient.h"
#include "LumaroCore/Weather/WeatherFetching.h"

#include <string>
#include <utility>

namespace lumaro {

/// Asks the board's own server.
class WorkerWeatherFetcher final : public WeatherFetching {
public:
    /// The client outlives the fetcher.
    WorkerWeatherFetcher(CoupleEndpoints endpoints, std::string authorization, HttpClient& http)
        : endpoints_(std::move(endpoints)), authorization_(std::move(authorization)), http_(http) {}

    [[nodiscard]] std::unique_ptr<Fetch> weather(double latitude, double longitude, Then then) override;

private:
    CoupleEndpoints endpoints_;
    std::string authorization_; ///< the header's value
    HttpClient& http_;
};

} // namespace lumaro
