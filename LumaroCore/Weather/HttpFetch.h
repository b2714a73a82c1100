// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/HttpClient.h"
#include "LumaroCore/Weather/WeatherFetching.h"

#include <expected>
#include <memory>
#include <string_view>
#include <utility>

namespace lumaro {

// What the sources that are asked over HTTP have in common.

/// The body of an answer that is a success; it lives as long as the answer.
inline std::expected<std::string_view, WeatherFault> successfulBody(const HttpClient::Answer& answer) {
    if (!answer) return std::unexpected(NoWeatherAnswer{answer.error().message});
    if (!answer->isSuccess()) return std::unexpected(BadWeatherResponse{answer->status});
    return answer->body;
}

/// A fetch that is one request.
inline std::unique_ptr<WeatherFetching::Fetch> fetched(HttpClient& http, HttpRequest request,
                                                       std::move_only_function<void(HttpClient::Answer)> then) {
    struct Request final : WeatherFetching::Fetch {
        std::unique_ptr<HttpClient::Call> call;
    };
    auto fetch = std::make_unique<Request>();
    fetch->call = http.send(std::move(request), std::move(then));
    return fetch;
}

} // namespace lumaro
