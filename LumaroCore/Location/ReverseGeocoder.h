// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Coordinates.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace lumaro {

/// What is known of a position by name.
struct PlaceFacts {
    std::optional<std::string> subLocality; ///< a part of a town
    std::optional<std::string> locality;    ///< the town
    std::optional<std::string> name;
    std::optional<std::string> timeZone; ///< IANA name

    bool operator==(const PlaceFacts&) const = default;
};

/// Names a position.
class ReverseGeocoder {
public:
    /// A question under way. Dropping it cancels it: its `then` is not called any more.
    class Request {
    public:
        Request() = default;
        Request(const Request&) = delete;
        Request& operator=(const Request&) = delete;
        virtual ~Request() = default;
    };

    ReverseGeocoder() = default;
    ReverseGeocoder(const ReverseGeocoder&) = delete;
    ReverseGeocoder& operator=(const ReverseGeocoder&) = delete;
    virtual ~ReverseGeocoder() = default;

    /// Calls `then` once, perhaps before this call returns; with empty facts when the position has no name, or it
    /// could not be found out. `then` may drop its own request.
    [[nodiscard]] virtual std::unique_ptr<Request> name(Coordinates position,
                                                        std::move_only_function<void(PlaceFacts)> then) = 0;
};

} // namespace lumaro
