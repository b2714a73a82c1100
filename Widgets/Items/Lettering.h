// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtGui/QFont>

class QPainter;

namespace lumaro {

// Letters on items, in points of the canvas. Nothing is hinted, so that lines break alike at every scale.

/// The hand of notes and captions.
QFont hand(double size, QFont::Weight weight = QFont::Normal);
/// The friendly sans of cards and clocks.
QFont sans(double size, QFont::Weight weight = QFont::Normal);

/// The same font, smaller where `text` is wider than `width`, but no smaller than `least`.
QFont fitted(QFont font, const QString& text, double width, double least);

/// One line within `rect`, in the painter's pen; what is too long ends with an ellipsis.
void drawLine(QPainter& painter, const QRectF& rect, Qt::Alignment alignment, const QString& text, const QFont& font);

/// At most `lines` lines within `rect`, broken between words. What is too long is set smaller, by a third at most, and
/// then ends with an ellipsis.
void drawLines(QPainter& painter, const QRectF& rect, Qt::Alignment alignment, const QString& text, QFont font,
               int lines);

/// Clocks and counts: digits of one width, so that nothing moves when one of them changes.
double figuresWidth(const QString& text, const QFont& font);
void drawFigures(QPainter& painter, QPointF baseline, const QString& text, const QFont& font);

} // namespace lumaro
