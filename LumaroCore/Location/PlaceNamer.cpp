// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Location/PlaceNamer.h"

namespace lumaro {

void PlaceNamer::name(Coordinates place) {
    if (facts_ != PlaceFacts{}) return;
    const auto now = clock_.now();
    const Seconds since = lastRequestAt_ ? now - *lastRequestAt_ : minimumInterval_;
    if (since >= Seconds{0} && since < minimumInterval_) {
        turn_ = sleeper_.wait(minimumInterval_ - since, [this, place] { name(place); });
        return;
    }
    turn_.reset();
    lastRequestAt_ = now;
    request_ = geocoder_.name(place, [this](PlaceFacts facts) {
        if (facts_ == facts) return;
        facts_ = std::move(facts);
        named_();
    });
}

void PlaceNamer::forget() {
    facts_ = {};
    turn_.reset();
    request_.reset();
}

} // namespace lumaro
