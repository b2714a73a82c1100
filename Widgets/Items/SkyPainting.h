// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Presence/Sky.h"

#include <QtCore/QRectF>
#include <QtGui/QColor>

class QPainter;

namespace lumaro {

/// What is seen out of a window.
struct SkyView {
    Sky sky = Sky::clear;
    bool isDay = true;
    double hour = 12; ///< local, 0 to 24
};

bool isDark(const SkyView& view);
/// The sky's colour just over the roofs.
QColor horizonColour(const SkyView& view);

// From far to near; all stay within `rect`. How large things are follows from its height.

void paintSky(QPainter& painter, const QRectF& rect, const SkyView& view);     ///< light, sun, moon, stars, clouds
void paintSkyline(QPainter& painter, const QRectF& rect, const SkyView& view); ///< the roofs, lit at night
void paintWeather(QPainter& painter, const QRectF& rect, const SkyView& view); ///< rain, flakes, fog, lightning

/// All three.
void paintView(QPainter& painter, const QRectF& rect, const SkyView& view);

} // namespace lumaro
