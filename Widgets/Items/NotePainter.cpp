// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/ItemPainting.h"
#include "Widgets/Items/Lettering.h"
#include "Widgets/Items/NoteLooks.h"
#include "Widgets/Items/NoteText.h"
#include "Widgets/Items/Painters.h"
#include "Widgets/Items/Palette.h"
#include "Widgets/Items/Paper.h"
#include "Widgets/Items/Shadow.h"

#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <cmath>

namespace lumaro {
namespace {

// A square whose lower edge curls a little off the glass, the right corner more than the left.
QPainterPath sheetOutline(QSizeF size) {
    const double width = size.width();
    const double height = size.height();
    QPainterPath path{{0, 0}};
    path.lineTo(width, 0);
    path.cubicTo({width, height * 0.6}, {width - 0.5, height * 0.85}, {width - 3, height - 6});
    path.cubicTo({width * 0.72, height - 0.5}, {width * 0.3, height + 0.5}, {0.5, height - 1.5});
    path.closeSubpath();
    return path;
}

// How far time has nibbled at the edge, `along` points from where it begins; 0 to 1, mostly little.
double nibble(double along) {
    const auto wave = [along](double length, double phase) { return 0.5 + 0.5 * std::sin(along / length + phase); };
    const double deep = std::pow(wave(31.7, 0.4) * wave(13.3, 2.1) * wave(57.1, 4.0), 1.6);
    return 2.6 * deep + 0.10 * wave(2.3, 1.0) * wave(1.1, 0.2);
}

// The edge as a day of hanging leaves it: a few soft nicks, always the same ones.
QPainterPath worn(const QPainterPath& outline, double wear) {
    if (wear < 0.05) return outline;
    const double length = outline.length();
    const auto steps = static_cast<int>(length / 2.5);
    const QPointF middle = outline.boundingRect().center();
    QPolygonF nicked;
    for (int i = 0; i < steps; ++i) {
        const QPointF point = outline.pointAtPercent(static_cast<double>(i) / steps);
        const QPointF inward = middle - point;
        nicked << point + inward / std::hypot(inward.x(), inward.y()) * (4.2 * wear * nibble(length * i / steps));
    }
    QPainterPath path;
    path.addPolygon(nicked);
    path.closeSubpath();
    return path;
}

// The shadow of the curl falls farther than that of the sheet.
QPainterPath shadowOutline(QSizeF size) {
    const double width = size.width();
    const double height = size.height();
    QPainterPath path{{4, 8}};
    path.lineTo(width - 2, 8);
    path.lineTo(width + 1.5, height - 1);
    path.cubicTo({width * 0.75, height - 4}, {width * 0.3, height - 4}, {3, height - 1});
    path.closeSubpath();
    return path;
}

// The lower edge as somebody tore the sheet off a larger one; always the same way.
QPainterPath tornOutline(QSizeF size) {
    QPainterPath path{{0, 0}};
    path.lineTo(size.width(), 0);
    constexpr int steps = 70;
    for (int i = 0; i <= steps; ++i) {
        const double tear = 3.2 * std::sin(i * 0.43) + 2.1 * std::sin(i * 1.7 + 1) + 1.3 * std::sin(i * 4.1);
        path.lineTo(size.width() * (steps - i) / steps, size.height() - 8 + tear);
    }
    path.closeSubpath();
    return path;
}

// The fibres that a tear leaves bare: a pale band along the edge.
void paintTear(QPainter& painter, const QPainterPath& outline, QSizeF size, const PaperColours& colours) {
    painter.save();
    painter.setClipPath(outline, Qt::IntersectClip);
    QPainterPath edge;
    edge.addRect(0, size.height() - 26, size.width(), 30);
    painter.setClipPath(edge, Qt::IntersectClip);
    painter.setBrush(Qt::NoBrush);
    painter.strokePath(outline, QPen{faint(mixed(colours.light, tint::light, 0.5), 0.9), 7});
    painter.strokePath(outline, QPen{faint(colours.shade, 0.8), 1.4});
    painter.restore();
}

void paintCurl(QPainter& painter, const QPainterPath& outline, QSizeF size, const PaperColours& colours) {
    QLinearGradient curl{size.width() * 0.40, size.height() * 0.70, size.width() * 0.46, size.height() * 1.01};
    curl.setColorAt(0, faint(colours.shade, 0));
    curl.setColorAt(0.62, faint(colours.shade, 0.34));
    curl.setColorAt(0.84, faint(colours.light, 0.22));
    curl.setColorAt(1, faint(colours.light, 0.55));
    painter.fillPath(outline, curl);
}

// A little heart, stamped by hand.
void paintKeptMark(QPainter& painter, QPointF middle) {
    QPainterPath heart{{0, 6.5}};
    heart.cubicTo({-10, -1}, {-6.5, -8.5}, {0, -3.6});
    heart.cubicTo({6.5, -8.5}, {10, -1}, {0, 6.5});
    painter.save();
    painter.translate(middle);
    painter.rotate(-11);
    painter.setPen(QPen{faint(tint::coralInk, 0.42), 1.2});
    painter.drawEllipse(QPointF{0, -0.4}, 12.5, 12.5);
    painter.fillPath(heart, faint(tint::coralInk, 0.72));
    painter.restore();
}

} // namespace

QRectF noteTextBox(QSizeF size) {
    return {22, 34, size.width() - 44, size.height() - 34 - 30};
}

void paintFace(QPainter& painter, const NoteFace& face, QSizeF size) {
    const double fade = face.isKept ? 0 : std::clamp(face.fade, 0.0, 1.0);
    const auto paper = faded(notePaper(face.paper), fade);
    const auto& colours = paper.colours;
    const auto outline = worn(paper.isTorn ? tornOutline(size) : sheetOutline(size), fade);
    paintShadow(painter, shadowOutline(size), 1);
    paintPaper(painter, outline, colours);
    paintPrint(painter, outline, size, paper);
    if (paper.isTorn) {
        paintTear(painter, outline, size, colours);
    } else {
        paintCurl(painter, outline, size, colours);
    }
    if (!face.hidesText) paintNoteText(painter, face.text, noteTextBox(size), colours);
    if (face.isKept) paintKeptMark(painter, {size.width() - 22, size.height() - 24});
    if (!face.until.isEmpty()) {
        painter.setPen(smallInkOn(colours));
        drawLine(painter, {16, size.height() - 31, size.width() - 32, 18}, Qt::AlignVCenter | Qt::AlignRight,
                 face.until, sans(12, QFont::DemiBold));
    }
    paintHolder(painter, size, face.pin, colours);
}

} // namespace lumaro
