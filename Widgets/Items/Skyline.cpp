// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Palette.h"
#include "Widgets/Items/SkyPainting.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <array>
#include <cmath>

namespace lumaro {
namespace {

enum class Roof { flat, gable, stepped, tank, dome, tower };

// In parts of the view's height.
struct House {
    double width = 0;
    double height = 0;
    Roof roof = Roof::flat;
};

constexpr std::array<House, 9> farRow{{{0.20, 0.30, Roof::flat},
                                       {0.13, 0.42, Roof::stepped},
                                       {0.22, 0.26, Roof::flat},
                                       {0.09, 0.50, Roof::tower},
                                       {0.18, 0.33, Roof::flat},
                                       {0.16, 0.24, Roof::dome},
                                       {0.12, 0.40, Roof::stepped},
                                       {0.21, 0.30, Roof::flat},
                                       {0.14, 0.36, Roof::tank}}};
constexpr std::array<House, 8> nearRow{{{0.19, 0.20, Roof::gable},
                                        {0.15, 0.26, Roof::tank},
                                        {0.17, 0.15, Roof::gable},
                                        {0.22, 0.22, Roof::flat},
                                        {0.14, 0.29, Roof::gable},
                                        {0.18, 0.17, Roof::flat},
                                        {0.16, 0.23, Roof::gable},
                                        {0.20, 0.18, Roof::stepped}}};

void addRoof(QPainterPath& path, const QRectF& house, Roof roof) {
    const double width = house.width();
    const double middle = house.center().x();
    const double top = house.top();
    switch (roof) {
    case Roof::flat: path.addRect(middle + width * 0.12, top - width * 0.14, width * 0.16, width * 0.16); break;
    case Roof::gable:
        path.addPolygon(QPolygonF{{house.topLeft() - QPointF{width * 0.05, 0},
                                   {middle, top - width * 0.36},
                                   house.topRight() + QPointF{width * 0.05, 0}}});
        path.addRect(middle + width * 0.2, top - width * 0.36, width * 0.12, width * 0.34);
        break;
    case Roof::stepped:
        path.addRect(middle - width * 0.3, top - width * 0.2, width * 0.6, width * 0.22);
        path.addRect(middle - width * 0.04, top - width * 0.55, width * 0.08, width * 0.4);
        break;
    case Roof::tank:
        path.addRect(middle - width * 0.24, top - width * 0.36, width * 0.36, width * 0.26);
        path.addRect(middle - width * 0.20, top - width * 0.14, width * 0.05, width * 0.16);
        path.addRect(middle + width * 0.03, top - width * 0.14, width * 0.05, width * 0.16);
        break;
    case Roof::dome: path.addEllipse(QPointF{middle, top}, width * 0.4, width * 0.34); break;
    case Roof::tower:
        path.addPolygon(QPolygonF{{house.topLeft(), {middle, top - width * 0.9}, house.topRight()}});
        break;
    }
}

// Lit ones at night, and by day a few that catch the sky.
void paintWindows(QPainter& painter, const QRectF& house, double unit, int seed, bool isLit, const QColor& wall) {
    const double step = 4.6 * unit;
    const int columns = static_cast<int>((house.width() - 2 * unit) / step);
    const int rows = static_cast<int>((house.height() - 2 * unit) / (step * 1.2));
    const double inset = (house.width() - columns * step) / 2 + step * 0.27;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const double chance = std::sin(seed * 7.7 + row * 3.1 + column * 5.3) * 43758.5453;
            const double part = chance - std::floor(chance);
            if (part > 0.34) continue;
            painter.fillRect(QRectF{house.left() + inset + column * step, house.top() + 3 * unit + row * step * 1.2,
                                    2.1 * unit, 2.7 * unit},
                             isLit ? mixed({255, 214, 132}, {255, 176, 108}, part * 3)
                                   : mixed(wall, tint::light, 0.24));
        }
    }
}

template <std::size_t count>
void paintRow(QPainter& painter, const QRectF& rect, const std::array<House, count>& row, double start,
              const QColor& colour, bool isLit, bool isSnowy) {
    const double unit = rect.height() / 100;
    double x = rect.left() + start * rect.height();
    for (std::size_t i = 0; x < rect.right(); ++i) {
        const auto& house = row[i % count];
        const double height = house.height * rect.height();
        const QRectF walls{x, rect.bottom() - height, house.width * rect.height(), height};
        QPainterPath path;
        path.setFillRule(Qt::WindingFill);
        path.addRect(walls.adjusted(0, 0, 0.2 * unit, 0));
        addRoof(path, walls, house.roof);
        if (isSnowy) {
            painter.fillPath(path, mixed(colour, tint::light, 0.86));
            path.translate(0, 2.6 * unit);
        }
        painter.fillPath(path, colour);
        paintWindows(painter, walls, unit, static_cast<int>(i) + (count == 9 ? 0 : 40), isLit, colour);
        x += walls.width();
    }
}

} // namespace

void paintSkyline(QPainter& painter, const QRectF& rect, const SkyView& view) {
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    painter.setPen(Qt::NoPen);
    const bool dark = isDark(view);
    const QColor haze = horizonColour(view);
    const QColor far = dark ? mixed(haze, {38, 40, 74}, 0.72) : mixed(haze, {116, 140, 182}, 0.50);
    const QColor near = dark ? QColor{33, 31, 58} : mixed(haze, {112, 84, 106}, 0.70);
    // Under heavy clouds the roofs are darker than the sky.
    const double gloom = dark ? 0 : view.sky == Sky::storm ? 0.5 : view.sky == Sky::rain ? 0.2 : 0;
    const QColor shade{48, 48, 74};
    const bool isSnowy = view.sky == Sky::snow;
    paintRow(painter, rect, farRow, -0.06, mixed(far, shade, gloom), dark, isSnowy);
    paintRow(painter, rect, nearRow, -0.03, mixed(near, shade, gloom), dark, isSnowy);
    painter.restore();
}

} // namespace lumaro
