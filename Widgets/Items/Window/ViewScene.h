// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Items/Window/SkyLight.h"
#include "Widgets/Items/Window/SkyView.h"

#include <QtCore/QRectF>

class QPainter;

namespace lumaro {

/// A view at work: where it is painted, in which light, and where in it a place over the horizon lies.
struct ViewScene {
    /// `density` is pixels for each unit of `rect`.
    ViewScene(const SkyView& seen, const QRectF& place, double pixels);

    const SkyView& view;
    QRectF rect;
    double density;
    SkyLight light;
    double unit;    ///< a hundredth of the height: things are as large as the view is high
    double horizon; ///< its y
    QPointF sun;    ///< its middle, which may lie outside
    QPointF moon;
    double sunTurn; ///< degrees from the middle of the view to the sun, -180 to 180, right is positive

    /// Where something stands that is seen in that direction. The view looks at the equator and up by 40 degrees, and
    /// takes in 250 degrees: so the sun goes from edge to edge each day, at noon through the middle wherever the place
    /// is, and in the night of a polar summer out of sight behind.
    QPointF at(double altitude, double azimuth) const;
    /// Of that direction, degrees from the middle, -180 to 180.
    double turn(double altitude, double azimuth) const;
    double xOf(double turn) const { return rect.center().x() + rect.width() * turn / 250; }
    /// From left to right, -1 to 1 and beyond: how far rain and snow drift for each part that they fall.
    double slant(double fallKmh) const;
};

// From far to near. All stay within the rect.

void paintAir(QPainter& painter, const ViewScene& scene); ///< the colours of the sky
void paintHeavens(QPainter& painter, const ViewScene& scene);
void paintClouds(QPainter& painter, const ViewScene& scene);
void paintLand(QPainter& painter, const ViewScene& scene); ///< hills, sea and the town, lit and misty
void paintLightning(QPainter& painter, const ViewScene& scene);
/// One frame of what falls, still.
void paintFall(QPainter& painter, const ViewScene& scene);

} // namespace lumaro
