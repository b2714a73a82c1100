// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Paper.h"

#include "Widgets/Items/Palette.h"
#include "Widgets/Items/Shadow.h"

#include <QtGui/QImage>
#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QRadialGradient>

#include <cmath>
#include <random>

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

} // namespace

const PaperColours& cardPaper() {
    static const auto made = [] {
        return PaperColours{lit({255, 252, 243}, 0.80), tint::card, tint::cardShade, tint::ink, tint::coral, 0.75};
    };
    static const PaperColours byDay = [] {
        const InLight day{Appearance::light};
        return made();
    }();
    static const PaperColours byLamp = [] {
        const InLight lamp{Appearance::dark};
        return made();
    }();
    return InLight::isLamp() ? byLamp : byDay;
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
    // The lamp's light falls from one side and shows fewer of the fibres.
    painter.setOpacity(painter.opacity() * strength * (InLight::isLamp() ? 0.55 : 1));
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.fillPath(outline, grainBrush());
    painter.restore();
}

void paintEdge(QPainter& painter, const QPainterPath& outline, double strength) {
    const QRectF rect = outline.boundingRect();
    QLinearGradient light{rect.topLeft(), rect.bottomRight()};
    const double glint = InLight::isLamp() ? 0.6 * strength : strength;
    light.setColorAt(0, faint(tint::light, 0.95 * glint));
    light.setColorAt(0.5, faint(tint::light, 0.45 * glint));
    light.setColorAt(0.85, faint({148, 108, 66}, 0.16 * strength));
    light.setColorAt(1, faint({148, 108, 66}, 0.26 * strength));
    painter.save();
    painter.setClipPath(outline, Qt::IntersectClip);
    painter.strokePath(outline, QPen{QBrush{light}, 2});
    painter.restore();
}

void paintTape(QPainter& painter, QPointF middle, QSizeF size, double degrees, const QColor& colour) {
    paintTape(painter, middle, size, degrees, colour, [](QPainter& on, QSizeF strip) {
        on.setPen(QPen{faint(tint::light, 0.30), 3.2});
        for (double x = -strip.width(); x < strip.width(); x += 9) {
            on.drawLine(QPointF{x, strip.height() / 2}, QPointF{x + strip.height(), -strip.height() / 2});
        }
    });
}

void paintTape(QPainter& painter, QPointF middle, QSizeF size, double degrees, const QColor& colour,
               const TapePattern& pattern) {
    painter.save();
    painter.translate(middle);
    painter.rotate(degrees);
    const auto outline = tapeOutline(size);
    painter.save();
    painter.setOpacity(0.45);
    paintShadow(painter, outline, 0.45);
    painter.restore();
    painter.fillPath(outline, faint(lit(colour, 0.38), InLight::isLamp() ? 0.88 : 0.74));
    painter.save();
    painter.setClipPath(outline, Qt::IntersectClip);
    pattern(painter, size);
    painter.restore();
    QLinearGradient sheen{0, -size.height() / 2, 0, size.height() / 2};
    sheen.setColorAt(0, faint(tint::light, 0.42));
    sheen.setColorAt(0.3, faint(tint::light, 0.10));
    sheen.setColorAt(1, faint(tint::umber, 0.07));
    painter.fillPath(outline, sheen);
    paintGrain(painter, outline, 0.8);
    painter.restore();
}

} // namespace lumaro
