// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Lettering.h"
#include "Widgets/Items/Painters.h"
#include "Widgets/Items/Palette.h"
#include "Widgets/Items/Paper.h"
#include "Widgets/Items/Picture.h"
#include "Widgets/Items/Shadow.h"

#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QRadialGradient>

#include <algorithm>

namespace lumaro {
namespace {

constexpr double border = 14;
constexpr double foot = 54; // the wide border below, where the caption stands

QRectF pictureRect(QSizeF size) {
    return {border, border, size.width() - 2 * border, size.height() - border - foot};
}

// Film that shows nothing yet.
void paintWaiting(QPainter& painter, const QRectF& rect, const QString& words) {
    QLinearGradient film{rect.topLeft(), rect.bottomRight()};
    film.setColorAt(0, lit({236, 216, 190}, 0.70));
    film.setColorAt(0.5, lit({220, 192, 162}, 0.70));
    film.setColorAt(1, lit({198, 164, 138}, 0.70));
    painter.fillRect(rect, film);
    QRadialGradient glow{rect.center() - QPointF{0, rect.height() * 0.08}, rect.width() * 0.55};
    glow.setColorAt(0, faint(tint::light, 0.45));
    glow.setColorAt(1, faint(tint::light, 0));
    painter.fillRect(rect, glow);
    painter.setPen(tint::ink);
    drawLines(painter, rect.adjusted(20, 0, -20, 0), Qt::AlignCenter, words, hand(30), 3);
}

// The light slides over the print, and the border throws a thin shadow on the picture.
void paintGloss(QPainter& painter, const QRectF& rect) {
    QLinearGradient gloss{rect.topLeft(), rect.topLeft() + QPointF{rect.height() * 0.62, rect.height()}};
    gloss.setColorAt(0, faint(tint::light, 0.17));
    gloss.setColorAt(0.30, faint(tint::light, 0.08));
    gloss.setColorAt(0.305, faint(tint::light, 0.02));
    gloss.setColorAt(0.7, faint(tint::umber, 0));
    gloss.setColorAt(1, faint(tint::umber, 0.08));
    painter.fillRect(rect, gloss);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen{faint(tint::umber, 0.16), 1});
    painter.drawRect(rect.adjusted(0.5, 0.5, -0.5, -0.5));
    painter.setPen(QPen{faint(tint::umber, 0.14), 1.6});
    painter.drawPolyline(QPolygonF{{rect.bottomLeft(), rect.topLeft(), rect.topRight()}}.translated(0.8, 0.8));
}

} // namespace

void paintFace(QPainter& painter, const PhotoFace& face, QSizeF size) {
    QPainterPath print;
    print.addRoundedRect(QRectF{{0, 0}, size}, 2.5, 2.5);
    paintShadow(painter, print);
    paintPaper(painter, print, cardPaper());
    const auto rect = pictureRect(size);
    const QImage picture = face.picture.pixels();
    if (picture.isNull()) {
        paintWaiting(painter, rect, face.words);
    } else {
        painter.fillRect(rect, QColor{214, 199, 178});
        paintPicture(painter, rect, picture);
        // The lamp lights a picture a little less than the day; its colours stay what they are.
        if (InLight::isLamp()) painter.fillRect(rect, faint(tint::umber, 0.14));
    }
    paintGloss(painter, rect);
    painter.setPen(tint::ink);
    const QRectF caption{border + 4, size.height() - foot + 3, size.width() - 2 * border - 8, foot - 9};
    drawLine(painter, caption, Qt::AlignCenter, face.caption, fitted(hand(30), face.caption, caption.width(), 21));
    paintTape(painter, {size.width() * 0.5, 1}, {std::min(104.0, size.width() * 0.42), 27}, -2.5, {238, 206, 146});
}

} // namespace lumaro
