// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QMarginsF>
#include <QtCore/QRectF>

class QImage;
class QPainter;
class QPainterPath;

namespace lumaro {

// The light stands at the top left. What hangs on the glass casts a narrow shadow where it touches and a wide one into
// the room behind; `lift` says how far it stands off, 1 for paper that lies flat.

void paintShadow(QPainter& painter, const QPainterPath& outline, double lift = 1);
/// The shadow of a picture's opaque part; the picture fills `rect`.
void paintShadow(QPainter& painter, const QImage& picture, const QRectF& rect, double lift = 1);

/// How far a shadow reaches beyond what casts it.
QMarginsF shadowReach(double lift = 1);

} // namespace lumaro
