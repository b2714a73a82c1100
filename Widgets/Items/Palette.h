// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Items/Light.h"

#include <QtGui/QBrush>
#include <QtGui/QColor>

#include <algorithm>

namespace lumaro {

/// A colour that items share, as the light makes it in which it is painted (`InLight`).
struct Tint {
    QColor day;
    QColor lamp;

    constexpr Tint(QColor byDay, QColor byLamp) : day(byDay), lamp(byLamp) {}
    operator QColor() const { return InLight::isLamp() ? lamp : day; }
    operator QBrush() const { return QColor{*this}; }
};

/// The colours that items share. Each is warm: the room's light lies on all of them. By lamplight card is dim and ink
/// light.
namespace tint {

inline constexpr Tint light{{255, 251, 240}, {172, 138, 96}};   ///< where the light falls
inline constexpr Tint card{{253, 247, 235}, {77, 60, 46}};      ///< card and photo paper
inline constexpr Tint cardShade{{243, 232, 212}, {57, 44, 34}}; ///< the same, away from the light
inline constexpr Tint umber{{74, 46, 26}, {20, 12, 8}};         ///< shadows
inline constexpr Tint ink{{66, 52, 41}, {245, 233, 212}};       ///< writing
inline constexpr Tint softInk{{112, 94, 76}, {205, 187, 161}};  ///< small print
inline constexpr Tint coral{{226, 112, 88}, {206, 102, 80}};
inline constexpr Tint coralInk{{172, 66, 46}, {250, 176, 156}};
inline constexpr Tint mint{{118, 183, 158}, {98, 158, 136}};
inline constexpr Tint mintInk{{45, 110, 90}, {150, 212, 186}};
inline constexpr Tint sun{{239, 188, 84}, {222, 170, 74}};
inline constexpr Tint sunInk{{132, 80, 14}, {246, 206, 124}};
inline constexpr Tint sky{{127, 176, 206}, {104, 148, 176}};
inline constexpr Tint plum{{126, 82, 122}, {150, 106, 148}};
inline constexpr Tint brass{{206, 160, 72}, {196, 148, 64}};

} // namespace tint

/// A part `t` of the way from `a` to `b`.
inline QColor mixed(const QColor& a, const QColor& b, double t) {
    const auto part = [t = std::clamp(t, 0.0, 1.0)](float from, float to) {
        return static_cast<float>(from + (to - from) * t);
    };
    return QColor::fromRgbF(part(a.redF(), b.redF()), part(a.greenF(), b.greenF()), part(a.blueF(), b.blueF()),
                            part(a.alphaF(), b.alphaF()));
}

/// A colour that is no tint, as the light makes it: by lamplight a part of it goes into the dark of the room.
inline QColor lit(const QColor& day, double part) {
    return InLight::isLamp() ? mixed(day, {38, 27, 20}, part) : day;
}

/// The colour with this opacity, 0 to 1.
inline QColor faint(QColor colour, double opacity) {
    colour.setAlphaF(static_cast<float>(std::clamp(opacity, 0.0, 1.0)));
    return colour;
}

} // namespace lumaro
