// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Contrast.h"

#include <algorithm>
#include <cmath>

namespace lumaro {
namespace {

double linear(float part) {
    return part <= 0.04045F ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// A part `t` of the way to black or to white.
QColor towards(const QColor& colour, float end, float t) {
    const auto part = [&](float from) { return from + (end - from) * t; };
    return QColor::fromRgbF(part(colour.redF()), part(colour.greenF()), part(colour.blueF()));
}

} // namespace

double contrast(const QColor& one, const QColor& other) {
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

double contrast(const QColor& ink, std::span<const QColor> grounds) {
    double least = 21;
    for (const auto& ground : grounds) least = std::min(least, contrast(ink, ground));
    return least;
}

QColor legible(const QColor& ink, std::span<const QColor> grounds, double ratio) {
    if (contrast(ink, grounds) >= ratio) return ink;
    constexpr int steps = 50;
    for (int step = 1; step <= steps; ++step) {
        for (const float end : {0.0F, 1.0F}) {
            const auto tried = towards(ink, end, static_cast<float>(step) / steps);
            // A hair more: the colour is rounded to whole steps where it is painted.
            if (contrast(tried, grounds) >= ratio * 1.01) return tried;
        }
    }
    const QColor black{Qt::black};
    const QColor white{Qt::white};
    return contrast(black, grounds) > contrast(white, grounds) ? black : white;
}

} // namespace lumaro
