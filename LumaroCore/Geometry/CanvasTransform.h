// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/Support/Plane.h"

namespace lumaro {

/// An affine map of the plane: x' = m11 x + m21 y + dx and y' = m12 x + m22 y + dy.
struct Affine {
    double m11 = 1;
    double m12 = 0;
    double m21 = 0;
    double m22 = 1;
    double dx = 0;
    double dy = 0;

    bool operator==(const Affine&) const = default;
};

/// Where the virtual canvas lies in a view: points of the canvas times `scale`, moved by `offset` in points of the
/// view. A transform whose scale is not positive shows nothing; its way back gives zeros.
struct CanvasTransform {
    double scale = 1;
    Point offset;

    static constexpr CanvasTransform identity() { return {}; }

    constexpr Point viewPoint(Point fromVirtual) const { return fromVirtual * scale + offset; }
    constexpr Point virtualPoint(Point fromView) const {
        return isVisible() ? Point{(fromView.x - offset.x) / scale, (fromView.y - offset.y) / scale} : Point{};
    }
    constexpr Rect viewRect(Rect fromVirtual) const {
        return {viewPoint(fromVirtual.origin), fromVirtual.size * scale};
    }
    constexpr Rect virtualRect(Rect fromView) const {
        if (!isVisible()) return {};
        return {virtualPoint(fromView.origin), {fromView.size.width / scale, fromView.size.height / scale}};
    }
    constexpr double viewLength(double fromVirtual) const { return fromVirtual * scale; }
    constexpr double virtualLength(double fromView) const { return isVisible() ? fromView / scale : 0.0; }

    /// `viewPoint` as a matrix.
    constexpr Affine affine() const { return {scale, 0, 0, scale, offset.x, offset.y}; }
    constexpr Rect canvasRectInView() const { return viewRect(BoardSpec::canvasRect); }

    bool operator==(const CanvasTransform&) const = default;

private:
    constexpr bool isVisible() const { return scale > 0; } // false for a NaN
};

/// The ways to lay the canvas into a view. A rectangle that is not finite, or has no positive size, gives scale 0 with
/// the offset at its centre, or at (0, 0) when the centre is not finite.
namespace VirtualCanvas {

/// The whole canvas, as large as `rect` holds it and centred there.
CanvasTransform aspectFit(Rect rect);
/// The canvas centred in `rect`, just large enough to leave none of it bare.
CanvasTransform aspectFill(Rect rect);

} // namespace VirtualCanvas
} // namespace lumaro
