// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Items/ItemFace.h"

#include <QtCore/QMarginsF>
#include <QtCore/QSizeF>

class QPainter;

namespace lumaro {

// One painter for each kind of face, and how far its picture reaches beyond the paper; `paintItem` and `bleed` choose
// among them.

void paintFace(QPainter& painter, const NoteFace& face, QSizeF size);
void paintFace(QPainter& painter, const PhotoFace& face, QSizeF size);
void paintFace(QPainter& painter, const CountdownFace& face, QSizeF size);
void paintFace(QPainter& painter, const MusicFace& face, QSizeF size);
void paintFace(QPainter& painter, const WindowFace& face, QSizeF size);
void paintFace(QPainter& painter, const ClocksFace& face, QSizeF size);
void paintFace(QPainter& painter, const DayFace& face, QSizeF size);
void paintFace(QPainter& painter, const BlockFace& face, QSizeF size);
void paintFace(QPainter& painter, const StickerFace& face, QSizeF size);
void paintFace(QPainter& painter, const DoodleFace& face, QSizeF size);

} // namespace lumaro
