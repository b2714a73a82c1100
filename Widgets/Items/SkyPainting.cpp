// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/SkyPainting.h"

#include "Widgets/Items/Palette.h"

#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QRadialGradient>

#include <algorithm>
#include <cmath>
#include <utility>

namespace lumaro {
namespace {

struct Light {
    QColor top;
    QColor middle;
    QColor horizon;
};

constexpr Light nightLight{{29, 38, 72}, {56, 64, 106}, {122, 104, 138}};
constexpr Light lowSunLight{{116, 138, 188}, {232, 172, 160}, {253, 216, 158}};

Light dayLight(Sky sky) {
    switch (sky) {
    case Sky::clear: return {{116, 178, 218}, {176, 216, 234}, {250, 236, 206}};
    case Sky::cloud: return {{146, 178, 200}, {192, 211, 220}, {240, 230, 210}};
    case Sky::rain: return {{112, 130, 150}, {152, 168, 180}, {206, 204, 196}};
    case Sky::night: return nightLight;
    case Sky::fog: return {{190, 200, 200}, {214, 217, 210}, {238, 230, 214}};
    case Sky::snow: return {{158, 178, 200}, {198, 210, 222}, {240, 234, 226}};
    case Sky::storm: return {{58, 64, 88}, {94, 98, 122}, {176, 160, 156}};
    }
    std::unreachable();
}

Light blended(const Light& a, const Light& b, double t) {
    return {mixed(a.top, b.top, t), mixed(a.middle, b.middle, t), mixed(a.horizon, b.horizon, t)};
}

// How low the sun stands: 1 when it rises or sets, 0 in the middle of the day.
double lowSun(double hour) {
    const double distance = std::min(std::abs(hour - 6.3), std::abs(hour - 19.3));
    return std::clamp(1 - distance / 2.4, 0.0, 1.0);
}

Light lightOf(const SkyView& view) {
    const auto day = dayLight(view.sky);
    if (isDark(view)) return blended(day, nightLight, view.sky == Sky::clear ? 1 : 0.74);
    const double warmth = view.sky == Sky::clear || view.sky == Sky::cloud ? 1 : 0.3;
    return blended(day, lowSunLight, lowSun(view.hour) * warmth);
}

// A number in 0 to 1 that looks like chance, the same for the same index.
double scattered(int index, double salt) {
    const double value = std::sin(index * 12.9898 + salt * 78.233) * 43758.5453;
    return value - std::floor(value);
}

void paintGlow(QPainter& painter, QPointF middle, double radius, const QColor& colour) {
    QRadialGradient glow{middle, radius};
    glow.setColorAt(0, colour);
    glow.setColorAt(0.4, faint(colour, colour.alphaF() * 0.35));
    glow.setColorAt(1, faint(colour, 0));
    painter.setBrush(glow);
    painter.drawEllipse(middle, radius, radius);
}

// A place on the way across the sky, 0 to 1, and never behind the middle of a window.
double beside(double way) {
    const double x = 0.14 + 0.72 * way;
    return std::abs(x - 0.5) > 0.11 ? x : x < 0.5 ? 0.39 : 0.61;
}

void paintSun(QPainter& painter, const QRectF& rect, double hour) {
    const double way = std::clamp((hour - 5.5) / 14.5, 0.06, 0.94);
    const QPointF middle{rect.left() + rect.width() * beside(way),
                         rect.top() + rect.height() * (0.62 - 0.42 * std::sin(way * 3.1416))};
    const double radius = rect.height() * 0.085;
    paintGlow(painter, middle, radius * 5.5, {255, 240, 196, 150});
    QRadialGradient face{middle - QPointF{radius * 0.3, radius * 0.3}, radius * 1.5};
    face.setColorAt(0, {255, 249, 222});
    face.setColorAt(1, {255, 214, 122});
    painter.setBrush(face);
    painter.drawEllipse(middle, radius, radius);
}

void paintMoon(QPainter& painter, const QRectF& rect, double hour) {
    const double way = std::fmod(hour + 24 - 18, 24) / 12;
    const QPointF middle{rect.left() + rect.width() * beside(std::clamp(way, 0.05, 0.95)),
                         rect.top() + rect.height() * 0.24};
    const double radius = rect.height() * 0.082;
    paintGlow(painter, middle, radius * 4.4, {246, 236, 206, 84});
    QPainterPath disc;
    disc.addEllipse(middle, radius, radius);
    QPainterPath dark;
    dark.addEllipse(middle + QPointF{radius * 0.62, -radius * 0.3}, radius * 0.92, radius * 0.92);
    painter.fillPath(disc.subtracted(dark), QColor{253, 243, 214});
    painter.fillPath(disc.intersected(dark), QColor{253, 243, 214, 9});
}

void paintStars(QPainter& painter, const QRectF& rect) {
    for (int i = 0; i < 46; ++i) {
        const double depth = scattered(i, 2);
        const double size = rect.height() * (0.0026 + 0.0040 * scattered(i, 3) * scattered(i, 4));
        painter.setBrush(QColor{255, 246, 224, static_cast<int>(230 - 150 * depth)});
        painter.drawEllipse(
            QPointF{rect.left() + rect.width() * scattered(i, 1), rect.top() + rect.height() * 0.62 * depth}, size,
            size);
    }
}

struct Cloud {
    double x = 0; // of its middle, in parts of the view
    double y = 0;
    double size = 1; // its width, in parts of the view's height
    double density = 1;
};

void paintCloud(QPainter& painter, const QRectF& rect, const Cloud& cloud, const QColor& light, const QColor& shade) {
    const double width = rect.height() * cloud.size;
    const QPointF middle{rect.left() + rect.width() * cloud.x, rect.top() + rect.height() * cloud.y};
    QPainterPath puffs;
    puffs.setFillRule(Qt::WindingFill);
    const auto puff = [&](double x, double y, double radius) {
        puffs.addEllipse(middle + QPointF{x * width, y * width}, radius * width, radius * width * 0.92);
    };
    puff(-0.34, 0.05, 0.10);
    puff(-0.20, -0.02, 0.16);
    puff(0.02, -0.08, 0.22);
    puff(0.22, 0.00, 0.16);
    puff(0.36, 0.06, 0.09);
    puffs.addRoundedRect(QRectF{middle.x() - 0.40 * width, middle.y() + 0.02 * width, 0.82 * width, 0.13 * width},
                         0.065 * width, 0.065 * width);
    QLinearGradient body{middle.x() - 0.1 * width, middle.y() - 0.3 * width, middle.x() + 0.1 * width,
                         middle.y() + 0.16 * width};
    body.setColorAt(0, faint(light, cloud.density));
    body.setColorAt(1, faint(shade, cloud.density * 0.92));
    painter.fillPath(puffs.simplified(), body);
}

void paintFairClouds(QPainter& painter, const QRectF& rect, const SkyView& view, bool isCovered) {
    const auto light = lightOf(view);
    const bool dark = isDark(view);
    const QColor top = dark ? mixed(light.middle, tint::light, 0.22) : mixed(light.horizon, {255, 253, 246}, 0.8);
    const QColor base = dark ? light.middle : mixed(light.middle, top, 0.35);
    if (!isCovered) {
        paintCloud(painter, rect, {.x = 0.76, .y = 0.36, .size = 0.34, .density = 0.62}, top, base);
        paintCloud(painter, rect, {.x = 0.24, .y = 0.24, .size = 0.26, .density = 0.5}, top, base);
        return;
    }
    paintCloud(painter, rect, {.x = 0.82, .y = 0.22, .size = 0.62, .density = 0.75}, top, base);
    paintCloud(painter, rect, {.x = 0.17, .y = 0.20, .size = 0.55, .density = 0.8}, top, base);
    paintCloud(painter, rect, {.x = 0.50, .y = 0.36, .size = 0.70, .density = 0.95}, top, base);
    paintCloud(painter, rect, {.x = 0.94, .y = 0.50, .size = 0.46, .density = 0.9}, top, base);
    paintCloud(painter, rect, {.x = 0.06, .y = 0.50, .size = 0.44, .density = 0.9}, top, base);
}

// A ceiling of cloud, as rain and snow come from: rows of puffs that hang from the upper edge.
void paintHeavyClouds(QPainter& painter, const QRectF& rect, const SkyView& view) {
    const auto light = lightOf(view);
    const QColor dark = mixed(light.top, {50, 54, 78}, view.sky == Sky::snow ? 0.04 : 0.26);
    const QColor pale = mixed(light.middle, tint::light, isDark(view) || view.sky == Sky::storm ? 0.06 : 0.26);
    for (int row = 2; row >= 0; --row) {
        QPainterPath ceiling;
        ceiling.setFillRule(Qt::WindingFill);
        const double depth = rect.height() * (0.07 + 0.11 * row);
        ceiling.addRect(rect.left(), rect.top() - depth, rect.width(), 1.5 * depth);
        const double step = rect.height() * 0.19;
        int i = 0;
        for (double x = rect.left() - step * (0.3 + 0.37 * row); x < rect.right() + step; x += step, ++i) {
            const double radius = rect.height() * (0.10 + 0.075 * scattered(i, row + 5));
            ceiling.addEllipse(QPointF{x, rect.top() + depth * (0.72 + 0.3 * scattered(i, row + 9))}, radius * 1.25,
                               radius);
        }
        QLinearGradient body{rect.left(), rect.top(), rect.left() + rect.width() * 0.1,
                             rect.top() + depth + rect.height() * 0.16};
        body.setColorAt(0, mixed(pale, dark, 0.75 - 0.25 * row));
        body.setColorAt(1, mixed(dark, pale, 0.12 + 0.26 * row));
        painter.fillPath(ceiling, body);
    }
}

void paintRain(QPainter& painter, const QRectF& rect, int drops, double opacity) {
    const double unit = rect.height() / 100;
    for (int i = 0; i < drops; ++i) {
        const double near = 0.4 + 0.6 * scattered(i, 3);
        const QPointF start{rect.left() + rect.width() * (1.15 * scattered(i, 1) - 0.02),
                            rect.top() + rect.height() * (1.1 * scattered(i, 2) - 0.08)};
        painter.setPen(QPen{QColor{236, 243, 248, static_cast<int>(255 * opacity * near)}, 0.75 * unit * near,
                            Qt::SolidLine, Qt::RoundCap});
        painter.drawLine(start, start + QPointF{-2.4, 9} * unit * near);
    }
}

void paintSnow(QPainter& painter, const QRectF& rect) {
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < 84; ++i) {
        const double near = scattered(i, 3);
        const double radius = rect.height() * (0.006 + 0.013 * near * near);
        painter.setBrush(QColor{255, 252, 246, static_cast<int>(150 + 100 * near)});
        painter.drawEllipse(
            QPointF{rect.left() + rect.width() * scattered(i, 1), rect.top() + rect.height() * scattered(i, 2)}, radius,
            radius);
    }
}

void paintFog(QPainter& painter, const QRectF& rect, const SkyView& view) {
    const QColor mist = mixed(horizonColour(view), tint::light, isDark(view) ? 0.16 : 0.45);
    painter.setPen(Qt::NoPen);
    QLinearGradient veil{rect.topLeft(), rect.bottomLeft()};
    veil.setColorAt(0, faint(mist, 0.10));
    veil.setColorAt(0.6, faint(mist, 0.5));
    veil.setColorAt(1, faint(mist, 0.86));
    painter.fillRect(rect, veil);
    for (int i = 0; i < 7; ++i) {
        const double y = rect.top() + rect.height() * (0.34 + 0.095 * i);
        const double height = rect.height() * (0.07 + 0.03 * scattered(i, 2));
        const double width = rect.width() * (0.62 + 0.3 * scattered(i, 3));
        const QRectF bank{rect.left() + (rect.width() - width * 0.6) * (scattered(i, 1) - 0.2), y, width, height};
        QLinearGradient soft{bank.topLeft(), bank.bottomLeft()};
        soft.setColorAt(0, faint(mixed(mist, tint::light, 0.4), 0.5));
        soft.setColorAt(1, faint(mist, 0.08));
        painter.setBrush(soft);
        painter.drawRoundedRect(bank, height / 2, height / 2);
    }
}

void paintLightning(QPainter& painter, const QRectF& rect) {
    const auto at = [&](double x, double y) {
        return QPointF{rect.left() + rect.width() * x, rect.top() + rect.height() * y};
    };
    painter.setPen(Qt::NoPen);
    paintGlow(painter, at(0.66, 0.42), rect.height() * 0.5, {255, 240, 200, 110});
    QPainterPath bolt{at(0.675, 0.20)};
    for (const auto& [x, y] :
         {std::pair{0.635, 0.46}, {0.662, 0.455}, {0.638, 0.70}, {0.70, 0.405}, {0.672, 0.41}, {0.705, 0.20}}) {
        bolt.lineTo(at(x, y));
    }
    bolt.closeSubpath();
    painter.fillPath(bolt, QColor{255, 236, 170});
}

} // namespace

bool isDark(const SkyView& view) {
    return !view.isDay || view.sky == Sky::night;
}

QColor horizonColour(const SkyView& view) {
    return lightOf(view).horizon;
}

void paintSky(QPainter& painter, const QRectF& rect, const SkyView& view) {
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    const auto light = lightOf(view);
    QLinearGradient air{rect.topLeft(), rect.bottomLeft()};
    air.setColorAt(0, light.top);
    air.setColorAt(0.52, light.middle);
    air.setColorAt(0.92, light.horizon);
    painter.fillRect(rect, air);
    painter.setPen(Qt::NoPen);
    const bool isFair = view.sky == Sky::clear || view.sky == Sky::night;
    if (isDark(view) && (isFair || view.sky == Sky::cloud)) paintStars(painter, rect);
    if (isFair || view.sky == Sky::cloud) {
        if (isDark(view))
            paintMoon(painter, rect, view.hour);
        else
            paintSun(painter, rect, view.hour);
        paintFairClouds(painter, rect, view, view.sky == Sky::cloud);
    } else if (view.sky != Sky::fog) {
        paintHeavyClouds(painter, rect, view);
    }
    painter.restore();
}

void paintWeather(QPainter& painter, const QRectF& rect, const SkyView& view) {
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    switch (view.sky) {
    case Sky::clear:
    case Sky::cloud:
    case Sky::night: break;
    case Sky::rain: paintRain(painter, rect, 120, 0.62); break;
    case Sky::fog: paintFog(painter, rect, view); break;
    case Sky::snow: paintSnow(painter, rect); break;
    case Sky::storm:
        paintLightning(painter, rect);
        paintRain(painter, rect, 150, 0.5);
        break;
    }
    painter.restore();
}

void paintView(QPainter& painter, const QRectF& rect, const SkyView& view) {
    paintSky(painter, rect, view);
    paintSkyline(painter, rect, view);
    paintWeather(painter, rect, view);
}

} // namespace lumaro
