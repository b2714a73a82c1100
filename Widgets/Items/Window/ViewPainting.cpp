// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Window/ViewPainting.h"

#include "Widgets/Items/Window/ViewScene.h"

#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace lumaro {

void paintView(QPainter& painter, const QRectF& rect, const SkyView& view) {
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setClipRect(rect, Qt::IntersectClip);
    const auto& toPixels = painter.deviceTransform();
    const double density = std::clamp(std::hypot(toPixels.m11(), toPixels.m12()), 0.1, 8.0);
    const ViewScene scene{view, rect, density};
    paintAir(painter, scene);
    paintHeavens(painter, scene);
    paintClouds(painter, scene);
    paintLightning(painter, scene);
    paintLand(painter, scene);
    paintFall(painter, scene);
    painter.restore();
}

} // namespace lumaro
