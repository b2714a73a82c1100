// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardModel/BoardSpec.h"
#include "Widgets/Items/ItemPainting.h"
#include "Widgets/Items/Lettering.h"
#include "Widgets/Items/Painters.h"
#include "Widgets/Items/Palette.h"
#include "Widgets/Items/Paper.h"
#include "Widgets/Items/Picture.h"
#include "Widgets/Items/Shadow.h"
#include "Widgets/Items/Window/ViewPainting.h"

#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <array>
#include <cmath>
#include <utility>

namespace lumaro {
namespace {

constexpr double beam = 13;   // the frame around the sashes
constexpr double rail = 5;    // the bars between the panes: across
constexpr double stile = 8;   // and upright
constexpr double sillY = 205; // where the sill begins

QRectF frameRect(QSizeF size) {
    const auto frame = BoardSpec::locationFrameSize;
    return {(size.width() - frame.width) / 2, 9, frame.width, frame.height};
}

QRectF glassRect(QSizeF size) {
    return frameRect(size).adjusted(beam, beam, -beam, -beam);
}

QPointF plantFoot(QSizeF size) {
    return {size.width() - 52, sillY + 3};
}

PaperColours paintedWood() {
    return {lit({255, 252, 244}, 0.62), lit({250, 243, 229}, 0.64), lit({230, 217, 194}, 0.66), tint::ink, tint::coral};
}

// Where the room's light does not reach: along the upper and the left beam.
void paintReveal(QPainter& painter, const QRectF& glass) {
    QLinearGradient above{glass.topLeft(), glass.topLeft() + QPointF{0, 11}};
    above.setColorAt(0, faint(tint::umber, 0.30));
    above.setColorAt(1, faint(tint::umber, 0));
    painter.fillRect(glass, above);
    QLinearGradient beside{glass.topLeft(), glass.topLeft() + QPointF{8, 0}};
    beside.setColorAt(0, faint(tint::umber, 0.22));
    beside.setColorAt(1, faint(tint::umber, 0));
    painter.fillRect(glass, beside);
}

void paintReflection(QPainter& painter, const QRectF& glass) {
    painter.save();
    painter.setClipRect(glass, Qt::IntersectClip);
    for (const auto& [start, width] : {std::pair{0.10, 0.15}, {0.30, 0.05}, {0.66, 0.11}}) {
        const double x = glass.left() + glass.width() * start;
        const double across = glass.width() * width;
        const double lean = glass.height() * 0.5;
        QPainterPath band;
        band.addPolygon(QPolygonF{{QPointF{x + lean, glass.top()}, QPointF{x + lean + across, glass.top()},
                                   QPointF{x + across, glass.bottom()}, QPointF{x, glass.bottom()}}});
        painter.fillPath(band, faint(tint::light, 0.075));
    }
    painter.restore();
}

void paintBeam(QPainter& painter, const QRectF& rect) {
    const bool isUpright = rect.height() > rect.width();
    QLinearGradient round{rect.topLeft(), isUpright ? rect.topRight() : rect.bottomLeft()};
    round.setColorAt(0, lit({255, 252, 244}, 0.62));
    round.setColorAt(0.5, lit({249, 241, 226}, 0.64));
    round.setColorAt(1, lit({222, 207, 182}, 0.66));
    painter.fillRect(rect.translated(1.6, 2.2), faint(tint::umber, 0.17));
    painter.fillRect(rect, round);
}

void paintFrame(QPainter& painter, const QRectF& frame) {
    QPainterPath outline;
    outline.addRoundedRect(frame, 3.5, 3.5);
    const QRectF glass = frame.adjusted(beam, beam, -beam, -beam);
    QPainterPath opening;
    opening.addRect(glass);
    const auto wood = outline.subtracted(opening);
    paintPaper(painter, wood, paintedWood());
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen{faint(tint::umber, 0.20), 1});
    painter.drawRect(glass.adjusted(-0.5, -0.5, 0.5, 0.5));
    painter.setPen(QPen{faint(tint::umber, 0.10), 1});
    painter.drawRect(glass.adjusted(-5, -5, 5, 5));
    painter.setPen(QPen{faint(tint::light, 0.9), 1});
    painter.drawRect(glass.adjusted(-4, -4, 6, 6));
}

void paintSashes(QPainter& painter, const QRectF& glass) {
    const QPointF middle = glass.center();
    paintBeam(painter, {glass.left(), middle.y() - rail / 2, glass.width(), rail});
    paintBeam(painter, {middle.x() - stile / 2, glass.top(), stile, glass.height()});
    painter.setPen(QPen{faint(tint::umber, 0.18), 1});
    painter.drawLine(QPointF{middle.x(), glass.top()}, QPointF{middle.x(), glass.bottom()});
    painter.setPen(Qt::NoPen);
    painter.setBrush(tint::brass);
    painter.drawRoundedRect(QRectF{middle.x() - 1.6, middle.y() - 9, 3.2, 18}, 1.6, 1.6);
    painter.setBrush(faint(tint::light, 0.6));
    painter.drawRoundedRect(QRectF{middle.x() - 1, middle.y() - 8, 1, 15}, 0.5, 0.5);
}

// The blind is down while there is nothing to see; it says why.
void paintBlind(QPainter& painter, const QRectF& glass, const QString& words) {
    SkyView evening;
    evening.sunAltitude = 4;
    evening.sunAzimuth = 270;
    paintView(painter, glass, evening);
    const QRectF cloth{glass.left(), glass.top(), glass.width(), glass.height() - 15};
    painter.fillRect(cloth.translated(0, 4), faint(tint::umber, 0.16));
    QLinearGradient linen{cloth.topLeft(), cloth.bottomRight()};
    linen.setColorAt(0, lit({246, 232, 208}, 0.68));
    linen.setColorAt(1, lit({228, 208, 178}, 0.68));
    painter.fillRect(cloth, linen);
    QPainterPath outline;
    outline.addRect(cloth);
    paintGrain(painter, outline, 1.6);
    for (double y = cloth.top() + 26; y < cloth.bottom() - 12; y += 26) {
        painter.fillRect(QRectF{cloth.left(), y, cloth.width(), 1}, faint(tint::umber, 0.09));
        painter.fillRect(QRectF{cloth.left(), y + 1, cloth.width(), 1}, faint(tint::light, 0.42));
    }
    paintBeam(painter, {cloth.left(), cloth.bottom() - 7, cloth.width(), 7});
    painter.setPen(QPen{faint(tint::umber, 0.45), 1.1});
    painter.drawLine(QPointF{cloth.center().x(), cloth.bottom()}, QPointF{cloth.center().x(), cloth.bottom() + 7});
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen{QColor{176, 122, 62}, 2});
    painter.drawEllipse(QPointF{cloth.center().x(), cloth.bottom() + 10}, 3.6, 3.6);
    painter.setPen(tint::ink);
    drawLines(painter, cloth.adjusted(18, 0, -18, -8), Qt::AlignCenter, words, hand(31), 3);
}

void paintSill(QPainter& painter, QSizeF size) {
    QPainterPath board;
    board.addRoundedRect(QRectF{1, sillY, size.width() - 2, 15}, 3, 3);
    paintShadow(painter, board);
    paintPaper(painter, board, paintedWood());
    painter.fillRect(QRectF{3, sillY + 9.5, size.width() - 6, 1}, faint(tint::umber, 0.16));
}

void paintLeaf(QPainter& painter, QPointF root, double degrees, double length, const QColor& colour) {
    painter.save();
    painter.translate(root);
    painter.rotate(degrees);
    QPainterPath leaf{{0, 0}};
    leaf.cubicTo({-length * 0.32, -length * 0.35}, {-length * 0.24, -length * 0.8}, {0, -length});
    leaf.cubicTo({length * 0.24, -length * 0.8}, {length * 0.32, -length * 0.35}, {0, 0});
    QLinearGradient green{-length * 0.25, 0, length * 0.25, 0};
    green.setColorAt(0, mixed(colour, tint::light, 0.28));
    green.setColorAt(0.5, colour);
    green.setColorAt(1, mixed(colour, {38, 62, 46}, 0.35));
    painter.fillPath(leaf, green);
    painter.setPen(QPen{faint(tint::light, 0.35), 0.7});
    painter.drawLine(QPointF{0, -2}, QPointF{0, -length * 0.86});
    painter.restore();
}

void paintPlant(QPainter& painter, QPointF foot) {
    constexpr QColor green{104, 148, 104};
    const QPointF root = foot - QPointF{0, 21};
    for (const auto& [degrees, length] :
         {std::pair{-52.0, 27.0}, {50.0, 29.0}, {-27.0, 38.0}, {29.0, 36.0}, {2.0, 45.0}}) {
        paintLeaf(painter, root, degrees, length, mixed(green, {150, 178, 112}, std::abs(degrees) / 90));
    }
    QPainterPath pot{foot + QPointF{-12.5, -23}};
    pot.lineTo(foot + QPointF{12.5, -23});
    pot.lineTo(foot + QPointF{9.5, 0});
    pot.lineTo(foot + QPointF{-9.5, 0});
    pot.closeSubpath();
    QPainterPath rim;
    rim.addRoundedRect(QRectF{foot.x() - 14.5, foot.y() - 25, 29, 7.5}, 2, 2);
    paintShadow(painter, pot, 0.6);
    QLinearGradient clay{foot.x() - 14, 0, foot.x() + 14, 0};
    clay.setColorAt(0, {234, 158, 122});
    clay.setColorAt(0.35, {214, 124, 90});
    clay.setColorAt(1, {168, 88, 62});
    painter.fillPath(pot, clay);
    painter.fillRect(QRectF{foot.x() - 12, foot.y() - 17.5, 24, 2}, faint(tint::umber, 0.18));
    painter.fillPath(rim, clay);
    paintEdge(painter, rim, 0.6);
}

QString joined(const QStringList& parts) {
    QStringList known;
    for (const auto& part : parts) {
        if (!part.isEmpty()) known << part;
    }
    return known.join(QStringLiteral("  ·  "));
}

// The tag under the sill: where it is, what time, how warm; and below, how old that is.
void paintTag(QPainter& painter, const WindowFace& face, QSizeF size) {
    QPainterPath tag;
    tag.addRoundedRect(QRectF{34, sillY + 25, size.width() - 68, 66}, 5, 5);
    paintShadow(painter, tag, 0.8);
    paintPaper(painter, tag, cardPaper());
    const QRectF inner = tag.boundingRect().adjusted(8, 3, -8, -7);
    const auto age = face.view ? joined({face.words, face.weatherAge}) : QString{};
    painter.setPen(tint::ink);
    const bool hasAge = !age.isEmpty();
    const QRectF place{inner.left() + 8, inner.top() - (hasAge ? 4 : 0), inner.width() - 16, hasAge ? 30.0 : 35.0};
    drawLine(painter, place, Qt::AlignCenter, face.place,
             fitted(hand(hasAge ? 27 : 31, QFont::Bold), face.place, place.width(), 20));
    painter.setPen(tint::softInk);
    const auto small = [&](const QString& text, double middle, double points, double least) {
        const QRectF line{inner.left(), middle - 11, inner.width(), 22};
        drawLine(painter, line, Qt::AlignCenter, text,
                 fitted(sans(points, QFont::DemiBold), text, line.width(), least));
    };
    small(joined({face.time, face.temperature}), inner.bottom() - (hasAge ? 20 : 11), 16, 11);
    if (hasAge) small(age, inner.bottom() - 3, 12, 9);
}

} // namespace

std::array<QRectF, 4> windowPanes(QSizeF size) {
    const QRectF glass = glassRect(size);
    const double width = (glass.width() - stile) / 2;
    const double height = (glass.height() - rail) / 2;
    std::array<QRectF, 4> panes;
    for (std::size_t i = 0; i < panes.size(); ++i) {
        panes[i] = {i % 2 == 0 ? glass.left() : glass.right() - width, i < 2 ? glass.top() : glass.bottom() - height,
                    width, height};
    }
    return panes;
}

QRectF windowPlantRect(QSizeF size) {
    const QPointF foot = plantFoot(size);
    return {foot.x() - 36, foot.y() - 72, 72, 76};
}

void paintWindowPlant(QPainter& painter, QSizeF size) {
    paintPlant(painter, plantFoot(size));
}

void paintFace(QPainter& painter, const WindowFace& face, QSizeF size) {
    const QRectF frame = frameRect(size);
    const QRectF glass = glassRect(size);
    QPainterPath outline;
    outline.addRoundedRect(frame, 3.5, 3.5);
    paintShadow(painter, outline, 1.2);
    if (face.view) {
        if (const auto city = face.city.pixels(); city.isNull()) {
            paintView(painter, glass, *face.view);
        } else {
            paintPicture(painter, glass, city);
        }
        paintReflection(painter, glass);
    } else {
        paintBlind(painter, glass, face.words);
    }
    paintReveal(painter, glass);
    if (face.view) paintSashes(painter, glass);
    paintFrame(painter, frame);
    paintSill(painter, size);
    paintWindowPlant(painter, size);
    const bool isKnown = !face.place.isEmpty() || !face.time.isEmpty() || !face.temperature.isEmpty();
    if (isKnown) paintTag(painter, face, size);
}

} // namespace lumaro
