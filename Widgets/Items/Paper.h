// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPointF>
#include <QtCore/QSizeF>
#include <QtCore/QString>
#include <QtGui/QColor>

#include <functional>

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

/// What is printed on a strip of tape that lies about the origin.
using TapePattern = std::function<void(QPainter& painter, QSizeF strip)>;
void paintTape(QPainter& painter, QPointF middle, QSizeF size, double degrees, const QColor& colour,
               const TapePattern& pattern);

} // namespace lumaro
