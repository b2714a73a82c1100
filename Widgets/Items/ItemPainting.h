// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Items/ItemFace.h"

#include <QtCore/QMarginsF>
#include <QtCore/QRectF>
#include <QtCore/QSizeF>

#include <array>

class QPainter;

namespace lumaro {

// The pictures of items. The painter's units are points of the canvas, its origin is the paper's top left corner, and
// `size` is the item's unscaled size. Pure: the same face gives the same picture, from any thread that may use fonts.

void paintItem(QPainter& painter, const ItemFace& face, QSizeF size);

/// How far shadows, tape, pins and other things that stand over the paper's edge reach beyond `size`.
QMarginsF bleed(const ItemFace& face);

/// Where a note's text lies on its paper.
QRectF noteTextBox(QSizeF size);

// A record in three layers, from below: what lies still under the disc; the disc, which may turn about the middle of
// `recordRect`; and what lies still over it (the light, the arm, the strip with the title). Together they are what
// `paintItem` paints.

void paintRecordRest(QPainter& painter, const MusicFace& face, QSizeF size);
void paintRecord(QPainter& painter, const MusicFace& face, QSizeF size);
void paintRecordLight(QPainter& painter, const MusicFace& face, QSizeF size);

/// The square around the disc, and the side of the one around the cover on it.
QRectF recordRect(QSizeF size);
double coverSide(QSizeF size);

/// Where the panes of a window card of that size are, row by row.
std::array<QRectF, 4> windowPanes(QSizeF size);
/// What stands before them in the room, and where.
void paintWindowPlant(QPainter& painter, QSizeF size);
QRectF windowPlantRect(QSizeF size);

} // namespace lumaro
