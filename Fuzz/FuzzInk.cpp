// SPDX-License-Identifier: Apache-2.0
#include "Fuzz/Fuzz.h"
#include "LumaroCore/Geometry/Doodle.h"
#include "LumaroCore/Geometry/InkEraser.h"

#include <algorithm>

using namespace lumaro;

// Strokes from anywhere: rubbed on, and made into a doodle that keeps to every cap.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto strokes = fuzz::roundTrip<std::vector<InkStroke>>(fuzz::textOf(data, size));
    if (!strokes) return 0;
    strokes = eraseInk(*strokes, {10, 10}, {60, 30}, 8);
    const auto doodle = makeDoodle(std::move(*strokes), std::nullopt);
    if (!doodle) return 0;
    const auto& payload = doodle->payload;
    const auto json = Wire::encode(payload.strokes);
    fuzz::require(json && json->size() <= BoardSpec::doodleBudgetBytes, "a doodle is over its budget");
    fuzz::require(std::max(payload.width, payload.height) <= BoardSpec::maxDoodleSide, "a doodle is too large");
    fuzz::require(payload.strokes.size() <= BoardSpec::maxStrokesPerDoodle, "a doodle has too many strokes");
    return 0;
}
