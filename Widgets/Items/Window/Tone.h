// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QColor>

#include <algorithm>

namespace lumaro {

/// A colour to reckon with: parts of 255, and beyond while light is added up.
struct Tone {
    float r = 0;
    float g = 0;
    float b = 0;

    friend constexpr Tone operator+(Tone x, Tone y) { return {x.r + y.r, x.g + y.g, x.b + y.b}; }
    friend constexpr Tone operator*(Tone x, float f) { return {x.r * f, x.g * f, x.b * f}; }
    /// Under a light: 255 is all of it.
    friend constexpr Tone operator*(Tone x, Tone light) {
        return {x.r * light.r / 255, x.g * light.g / 255, x.b * light.b / 255};
    }

    constexpr float brightness() const { return 0.30F * r + 0.59F * g + 0.11F * b; }
    QColor colour(double opacity = 1) const {
        const auto part = [](float value) { return std::clamp(static_cast<int>(value + 0.5F), 0, 255); };
        return {part(r), part(g), part(b), std::clamp(static_cast<int>(opacity * 255 + 0.5), 0, 255)};
    }
};

/// A part `t`, 0 to 1, of the way from `a` to `b`.
constexpr Tone blend(Tone a, Tone b, double t) {
    const auto part = static_cast<float>(t);
    return a * (1 - part) + b * part;
}

/// 0 up to `from`, 1 beyond `to`, smooth between them; `from` may be the larger.
constexpr double rise(double from, double to, double value) {
    const double t = std::clamp((value - from) / (to - from), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

} // namespace lumaro
