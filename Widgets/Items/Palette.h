// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QColor>

#include <algorithm>

namespace lumaro {

/// The colours that items share. Each is warm: the room's light lies on all of them.
namespace tint {

inline constexpr QColor light{255, 251, 240};     ///< where the light falls
inline constexpr QColor card{253, 247, 235};      ///< card and photo paper
inline constexpr QColor cardShade{243, 232, 212}; ///< the same, away from the light
inline constexpr QColor umber{74, 46, 26};        ///< shadows
inline constexpr QColor ink{66, 52, 41};          ///< writing
inline constexpr QColor softInk{116, 98, 80};     ///< small print; 4.5:1 on card
inline constexpr QColor coral{226, 112, 88};
inline constexpr QColor coralInk{172, 66, 46};
inline constexpr QColor mint{118, 183, 158};
inline constexpr QColor mintInk{45, 110, 90};
inline constexpr QColor sun{239, 188, 84};
inline constexpr QColor sky{127, 176, 206};
inline constexpr QColor plum{126, 82, 122};
inline constexpr QColor brass{206, 160, 72};

} // namespace tint

/// A part `t` of the way from `a` to `b`.
inline QColor mixed(const QColor& a, const QColor& b, double t) {
    const auto part = [t = std::clamp(t, 0.0, 1.0)](float from, float to) {
        return static_cast<float>(from + (to - from) * t);
    };
    return QColor::fromRgbF(part(a.redF(), b.redF()), part(a.greenF(), b.greenF()), part(a.blueF(), b.blueF()),
                            part(a.alphaF(), b.alphaF()));
}

/// The colour with this opacity, 0 to 1.
inline QColor faint(QColor colour, double opacity) {
    colour.setAlphaF(static_cast<float>(std::clamp(opacity, 0.0, 1.0)));
    return colour;
}

} // namespace lumaro
