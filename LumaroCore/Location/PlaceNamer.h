// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Location/ReverseGeocoder.h"
#include "LumaroCore/Support/Instant.h"
#include "LumaroCore/Support/Sleeper.h"
#include "LumaroCore/Support/WallClock.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace lumaro {

/// Asks for the names of places, no sooner than an interval after the last question. Dropping it is its end.
class PlaceNamer {
public:
    /// All outlive the namer. `named` hears that the facts changed, perhaps from within `name`.
    PlaceNamer(ReverseGeocoder& geocoder, Sleeper& sleeper, WallClock& clock, Seconds minimumInterval,
               std::function<void()> named)
        : geocoder_(geocoder), sleeper_(sleeper), clock_(clock), minimumInterval_(minimumInterval),
          named_(std::move(named)) {}
    PlaceNamer(const PlaceNamer&) = delete;
    PlaceNamer& operator=(const PlaceNamer&) = delete;
    ~PlaceNamer() = default;

    /// Finds the names of this place, if it has none yet: at once, or as soon as a question may be asked again.
    void name(Coordinates place);
    /// The next place is another one.
    void forget();

    /// What is known of the place; empty as long as nothing is.
    const PlaceFacts& facts() const { return facts_; }
    std::optional<Instant> lastRequestAt() const { return lastRequestAt_; }

private:
    ReverseGeocoder& geocoder_;
    Sleeper& sleeper_;
    WallClock& clock_;
    Seconds minimumInterval_;
    std::function<void()> named_;
    PlaceFacts facts_;
    std::optional<Instant> lastRequestAt_;
    std::unique_ptr<Sleeper::Wait> turn_; ///< of a place that waits for that
    std::unique_ptr<ReverseGeocoder::Request> request_;
};

} // namespace lumaro
