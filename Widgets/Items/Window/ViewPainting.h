// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Items/Window/SkyView.h"

#include <QtCore/QRectF>

class QImage;
class QPainter;
class QSize;

namespace lumaro {

/// Paints what is seen into `rect`, and nothing beside it. The same view makes the same picture on every computer.
void paintView(QPainter& painter, const QRectF& rect, const SkyView& view);

/// How what falls moves over a picture that was painted without it: a tile to be moved over the view.
struct FallingTile {
    double dx = 0; ///< parts of the tile's height in a second, right is positive
    double dy = 0; ///< parts of its height in a second
};

/// Whether rain or snow falls.
bool falls(const SkyView& view);
FallingTile fallingTile(const SkyView& view);
/// What falls, of that size in pixels, with `density` pixels for a point; it goes on over each edge at the other.
QImage paintedTile(const SkyView& view, QSize pixels, double density);

} // namespace lumaro
