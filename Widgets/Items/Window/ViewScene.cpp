// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Window/ViewScene.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace lumaro {
namespace {

constexpr double viewRadian = std::numbers::pi / 180;
constexpr double lookUp = 40 * viewRadian;

} // namespace

ViewScene::ViewScene(const SkyView& seen, const QRectF& place, double pixels)
    : view(seen), rect(place), density(pixels), light(lightOf(seen)), unit(place.height() / 100),
      horizon(place.top() + place.height() * 0.74), sun(at(seen.sunAltitude, seen.sunAzimuth)),
      moon(at(seen.moon.altitude, seen.moon.azimuth)), sunTurn(turn(seen.sunAltitude, seen.sunAzimuth)) {
}

double ViewScene::turn(double altitude, double azimuth) const {
    const double aside = (azimuth - (view.looksSouth() ? 180 : 0)) * viewRadian;
    const double height = std::clamp(altitude, -90.0, 90.0) * viewRadian;
    const double right = std::cos(height) * std::sin(aside);
    const double ahead = std::cos(height) * std::cos(aside) * std::cos(lookUp) + std::sin(height) * std::sin(lookUp);
    return std::atan2(right, ahead) / viewRadian;
}

QPointF ViewScene::at(double altitude, double azimuth) const {
    const double height = std::sin(std::clamp(altitude, -90.0, 90.0) * viewRadian);
    return {xOf(turn(altitude, azimuth)), horizon - height * 0.66 * rect.height()};
}

double ViewScene::slant(double fallKmh) const {
    const double right = (view.looksSouth() ? 270 : 90) * viewRadian;
    const double towards = view.windFrom * viewRadian + std::numbers::pi;
    return std::clamp(view.windKmh * std::cos(towards - right) / fallKmh, -1.1, 1.1);
}

} // namespace lumaro
