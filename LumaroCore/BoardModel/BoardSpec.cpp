// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardModel/BoardSpec.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace lumaro::BoardSpec {
namespace {

// In the order of `ItemKind`.
constexpr std::array<Size, 10> sizes{{
    noteSize,
    {290, 362},
    countdownChipSize,
    musicDiskSize,
    locationWindowSize,
    timezonesCardSize,
    calendarPageSize,
    pomodoroCardSize,
    {205, 205},
    {120, 120},
}};

// `std::clamp` that takes a NaN, which no limit holds, to the lower limit: the result is always a valid aspect.
double clampAspect(double aspect, double low, double high) {
    return aspect >= low ? std::min(aspect, high) : low;
}

// A rectangle of about this area with this aspect, in whole points.
Size sized(double area, double aspect) {
    return {std::round(std::sqrt(area * aspect)), std::round(std::sqrt(area / aspect))};
}

} // namespace

Size size(ItemKind kind) {
    return sizes[static_cast<std::size_t>(std::to_underlying(kind))];
}

bool isValidRotation(double degrees) {
    return std::abs(degrees) <= maxRotationDegrees; // false for a NaN
}

bool isValidScale(double scale) {
    return scale >= minItemScale && scale <= maxItemScale; // false for a NaN
}

double clampRotation(double degrees) {
    if (std::isnan(degrees)) return 0;
    return std::clamp(degrees, -maxRotationDegrees, maxRotationDegrees);
}

double clampScale(double scale) {
    if (!std::isfinite(scale)) return 1;
    return std::clamp(scale, minItemScale, maxItemScale);
}

double settleScale(double scale) {
    const double clamped = clampScale(scale);
    return std::abs(clamped - 1) <= itemScaleSnap ? 1.0 : clamped;
}

bool canResize(ItemKind kind) {
    return kind != ItemKind::location && kind != ItemKind::doodle;
}

Size printSize(std::optional<double> aspect) {
    return sized(printArea, clampAspect(aspect.value_or(defaultPrintAspect), 0.5, 2.0));
}

Size stickerSize(double aspect) {
    return sized(stickerArea, clampAspect(aspect, 0.4, 2.5));
}

} // namespace lumaro::BoardSpec
