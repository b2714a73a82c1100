// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Paper.h"

#include "Widgets/Items/Palette.h"
#include "Widgets/Items/Shadow.h"

#include <QtGui/QImage>
#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QRadialGradient>

#include <array>
#include <cmath>
#include <random>
#include <utility>

namespace lumaro {
namespace {

constexpr int grainSide = 512;       // pixels of the tile that repeats
constexpr double grainDensity = 2.0; // pixels a point

double unit(std::mt19937& random) {
    return static_cast<double>(random()) / static_cast<double>(std::mt19937::max());
}

void paintFibre(QPainter& painter, std::mt19937& random) {
    const QPointF start{unit(random) * grainSide, unit(random) * grainSide};
    const double angle = unit(random) * 6.283;
    const double length = 10 + unit(random) * 22;
    const double bend = (unit(random) - 0.5) * 12;
    const QPointF along{std::cos(angle) * length, std::sin(angle) * length};
    const QPointF across{-std::sin(angle) * bend, std::cos(angle) * bend};
    QPainterPath fibre{start};
    fibre.quadTo(start + along / 2 + across, start + along);
    const bool isLight = unit(random) < 0.55;
    painter.setPen(
        QPen{isLight ? QColor{255, 252, 244, 44} : QColor{92, 62, 34, 22}, 1.1, Qt::SolidLine, Qt::RoundCap});
    // The tile meets itself: what leaves it on one side comes back on the other.
    for (const int dx : {-grainSide, 0, grainSide}) {
        for (const int dy : {-grainSide, 0, grainSide}) painter.drawPath(fibre.translated(dx, dy));
    }
}

QImage makeGrain() {
    QImage tile{grainSide, grainSide, QImage::Format_ARGB32_Premultiplied};
    std::mt19937 random{20};
    for (int y = 0; y < grainSide; ++y) {
        auto* const line = reinterpret_cast<QRgb*>(tile.scanLine(y));
        for (int x = 0; x < grainSide; ++x) {
            // Two draws make the middle the likeliest: few specks stand out.
            const double speck = unit(random) + unit(random) - 1;
            const int alpha = static_cast<int>(std::lround(std::abs(speck) * 13));
            line[x] = qPremultiply(speck > 0 ? qRgba(255, 251, 240, alpha) : qRgba(86, 58, 34, alpha));
        }
    }
    QPainter painter{&tile};
    painter.setRenderHint(QPainter::Antialiasing);
    for (int i = 0; i < 190; ++i) paintFibre(painter, random);
    return tile;
}

QBrush grainBrush() {
    static const QImage tile = makeGrain();
    QBrush brush{tile};
    brush.setTransform(QTransform::fromScale(1 / grainDensity, 1 / grainDensity));
    return brush;
}

QPainterPath tapeOutline(QSizeF size) {
    const double width = size.width() / 2;
    const double height = size.height() / 2;
    const int teeth = std::max(3, static_cast<int>(size.height() / 4));
    QPainterPath path{{-width, -height}};
    path.lineTo(width, -height);
    for (int i = 1; i <= 2 * teeth; ++i) {
        path.lineTo(width - (i % 2 == 1 ? 2.2 : 0.0), -height + size.height() * i / (2 * teeth));
    }
    path.lineTo(-width, height);
    for (int i = 1; i <= 2 * teeth; ++i) {
        path.lineTo(-width + (i % 2 == 1 ? 2.2 : 0.0), height - size.height() * i / (2 * teeth));
    }
    path.closeSubpath();
    return path;
}

QColor pinColour(const QString& name) {
    if (name == u"coral") return tint::coral;
    if (name == u"mint") return tint::mint;
    if (name == u"ink") return {84, 68, 76};
    return tint::brass;
}

} // namespace

PaperColours paperNamed(const QString& name) {
    static const std::array<std::pair<const char16_t*, PaperColours>, 6> papers{{
        {u"butter", {{255, 243, 196}, {252, 231, 160}, {241, 211, 126}, {74, 58, 32}, {235, 160, 142}}},
        {u"blush", {{255, 231, 223}, {250, 211, 200}, {238, 186, 173}, {88, 46, 42}, {164, 196, 168}}},
        {u"sage", {{234, 241, 217}, {214, 226, 190}, {190, 206, 160}, {52, 64, 40}, {243, 205, 128}}},
        {u"sky", {{227, 240, 246}, {201, 224, 236}, {171, 202, 220}, {40, 62, 78}, {240, 168, 146}}},
        {u"lilac", {{240, 230, 246}, {223, 208, 236}, {199, 180, 218}, {64, 48, 80}, {158, 206, 188}}},
        {u"oat", {{251, 244, 231}, {241, 229, 208}, {223, 205, 176}, {70, 55, 40}, {152, 190, 212}}},
    }};
    for (const auto& [paper, colours] : papers) {
        if (name == paper) return colours;
    }
    return papers.front().second;
}

const PaperColours& cardPaper() {
    static const PaperColours card{{255, 252, 243}, tint::card, tint::cardShade, tint::ink, tint::coral, 0.75};
    return card;
}

void paintPaper(QPainter& painter, const QPainterPath& outline, const PaperColours& colours) {
    const QRectF rect = outline.boundingRect();
    QLinearGradient light{rect.topLeft(), rect.bottomRight()};
    light.setColorAt(0, colours.light);
    light.setColorAt(0.45, colours.base);
    light.setColorAt(1, mixed(colours.base, colours.shade, 0.7));
    painter.fillPath(outline, light);
    paintGrain(painter, outline, colours.grain);
    paintEdge(painter, outline);
}

void paintGrain(QPainter& painter, const QPainterPath& outline, double strength) {
    painter.save();
    painter.setOpacity(painter.opacity() * strength);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.fillPath(outline, grainBrush());
    painter.restore();
}

void paintEdge(QPainter& painter, const QPainterPath& outline, double strength) {
    const QRectF rect = outline.boundingRect();
    QLinearGradient light{rect.topLeft(), rect.bottomRight()};
    light.setColorAt(0, faint(tint::light, 0.95 * strength));
    light.setColorAt(0.5, faint(tint::light, 0.45 * strength));
    light.setColorAt(0.85, faint({148, 108, 66}, 0.16 * strength));
    light.setColorAt(1, faint({148, 108, 66}, 0.26 * strength));
    painter.save();
    painter.setClipPath(outline, Qt::IntersectClip);
    painter.strokePath(outline, QPen{QBrush{light}, 2});
    painter.restore();
}

void paintTape(QPainter& painter, QPointF middle, QSizeF size, double degrees, const QColor& colour) {
    painter.save();
    painter.translate(middle);
    painter.rotate(degrees);
    const auto outline = tapeOutline(size);
    painter.save();
    painter.setOpacity(0.45);
    paintShadow(painter, outline, 0.45);
    painter.restore();
    painter.fillPath(outline, faint(colour, 0.74));
    painter.save();
    painter.setClipPath(outline, Qt::IntersectClip);
    painter.setPen(QPen{faint(tint::light, 0.30), 3.2});
    for (double x = -size.width(); x < size.width(); x += 9) {
        painter.drawLine(QPointF{x, size.height() / 2}, QPointF{x + size.height(), -size.height() / 2});
    }
    painter.restore();
    QLinearGradient sheen{0, -size.height() / 2, 0, size.height() / 2};
    sheen.setColorAt(0, faint(tint::light, 0.42));
    sheen.setColorAt(0.3, faint(tint::light, 0.10));
    sheen.setColorAt(1, faint(tint::umber, 0.07));
    painter.fillPath(outline, sheen);
    paintGrain(painter, outline, 0.8);
    painter.restore();
}

void paintPin(QPainter& painter, QPointF middle, const QString& name) {
    const QColor colour = pinColour(name);
    QPainterPath base;
    base.addEllipse(middle + QPointF{1.4, 2}, 8.4, 8.2);
    paintShadow(painter, base, 0.75);
    QRadialGradient skirt{middle + QPointF{-2, -2}, 13};
    skirt.setColorAt(0, colour.lighter(112));
    skirt.setColorAt(1, mixed(colour, tint::umber, 0.45));
    painter.setPen(Qt::NoPen);
    painter.setBrush(skirt);
    painter.drawEllipse(middle + QPointF{0.6, 0.9}, 9.6, 9.5);
    QRadialGradient head{middle + QPointF{-3.2, -3.8}, 11};
    head.setColorAt(0, mixed(colour, tint::light, 0.82));
    head.setColorAt(0.32, mixed(colour, tint::light, 0.24));
    head.setColorAt(0.75, colour);
    head.setColorAt(1, mixed(colour, tint::umber, 0.28));
    painter.setBrush(head);
    painter.drawEllipse(middle + QPointF{-0.7, -0.9}, 7.2, 7.1);
    painter.setBrush(faint(tint::light, 0.8));
    painter.drawEllipse(middle + QPointF{-3.3, -3.9}, 1.7, 1.2);
}

} // namespace lumaro
