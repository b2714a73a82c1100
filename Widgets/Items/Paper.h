// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPointF>
#include <QtCore/QSizeF>
#include <QtCore/QString>
#include <QtGui/QColor>

class QPainter;
class QPainterPath;

namespace lumaro {

/// A paper in the light: towards it, in the middle, and away from it; and the ink that is written on it with.
struct PaperColours {
    QColor light;
    QColor base;
    QColor shade;
    QColor ink;
    QColor tape; ///< the washi tape that goes with it
    double grain = 1;
};

/// The note papers: butter, blush, sage, sky, lilac, oat. Any other name is butter.
PaperColours paperNamed(const QString& name);
/// Cream card, as photos, tickets and cards are made of.
const PaperColours& cardPaper();

/// A sheet of this outline: the light on it, its fibres, and the warm edge. Without its shadow.
void paintPaper(QPainter& painter, const QPainterPath& outline, const PaperColours& colours);

/// The fibres and specks of paper over what is painted already; strength 1 for note paper.
void paintGrain(QPainter& painter, const QPainterPath& outline, double strength = 1);

/// The edge that catches the light: a point wide, bright at the top left.
void paintEdge(QPainter& painter, const QPainterPath& outline, double strength = 1);

/// A strip of washi tape about its middle, torn at both ends.
void paintTape(QPainter& painter, QPointF middle, QSizeF size, double degrees, const QColor& colour);

/// A pin seen from the front: brass, coral, mint or ink. Any other name is brass.
void paintPin(QPainter& painter, QPointF middle, const QString& name);

} // namespace lumaro
