// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Window/LandParts.h"

#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>

namespace lumaro {
namespace {

/// How many of the windows are lit at an hour, where it is dark.
double litShareAt(double hour) {
    constexpr std::array<std::pair<double, double>, 12> day{{{0, 0.30},
                                                             {1, 0.16},
                                                             {2, 0.08},
                                                             {3, 0.05},
                                                             {4.5, 0.06},
                                                             {6, 0.24},
                                                             {7, 0.42},
                                                             {9, 0.30},
                                                             {16, 0.34},
                                                             {19, 0.56},
                                                             {21, 0.66},
                                                             {22.6, 0.58}}};
    for (std::size_t i = 0; i < day.size(); ++i) {
        const auto [from, share] = day[i];
        const auto [to, next] = i + 1 < day.size() ? day[i + 1] : std::pair{24.0, day.front().second};
        if (hour < to) return share + (next - share) * (hour - from) / (to - from);
    }
    return day.front().second;
}

class HousePainter {
public:
    HousePainter(QPainter& painter, const ViewScene& scene, const House& house, Distance distance)
        : painter_(painter), scene_(scene), house_(house), distance_(distance), chance_(house.seed, 7) {}

    void paint() {
        const QRectF& walls = house_.walls;
        // The side towards the sun is lighter.
        const double side = std::clamp(scene_.sunTurn / 70, -1.0, 1.0) * scene_.light.direct *
                            rise(-3, 4, scene_.view.sunAltitude) * (1 - distance_.far);
        QLinearGradient body{walls.topLeft(), walls.topRight()};
        const auto lit = [&](double amount) {
            return distance_.seen(scene_, house_.wall * static_cast<float>(0.97 + 0.10 * amount)).colour();
        };
        body.setColorAt(0, lit(-side));
        body.setColorAt(1, lit(side));
        painter_.fillRect(walls, body);
        if (house_.pane > 0) paintPanes();
        paintRoof();
    }

private:
    QColor roofTone(double shade = 1) const {
        const Tone own = blend(house_.top, {246, 248, 252}, 0.92 * scene_.view.snowOnRoofs);
        return distance_.seen(scene_, own * static_cast<float>(shade)).colour();
    }
    QColor wallTone(double shade = 1) const {
        return distance_.seen(scene_, house_.wall * static_cast<float>(shade)).colour();
    }

    void fill(std::initializer_list<QPointF> corners, const QColor& colour) {
        painter_.setBrush(colour);
        painter_.drawPolygon(QPolygonF{corners});
    }
    /// A cover of snow on something flat.
    void paintCover(double left, double right, double y) {
        if (scene_.view.snowOnRoofs <= 0) return;
        const double thick = scene_.unit * (0.5 + 0.7 * scene_.view.snowOnRoofs) * (1 - 0.5 * distance_.far);
        painter_.fillRect(QRectF{left, y - thick, right - left, thick}, roofTone());
    }

    void paintChimney(double x, double y) {
        const double wide = std::max(scene_.unit * 1.1, house_.walls.width() * 0.08);
        painter_.fillRect(QRectF{x, y - wide * 1.7, wide, wide * 2}, wallTone(0.78));
        paintCover(x, x + wide, y - wide * 1.7);
    }

    void paintRoof() {
        switch (house_.roof) {
        case Roof::flat: return paintFlat();
        case Roof::gable: return paintGable();
        case Roof::along: return paintAlong();
        case Roof::mansard: return paintMansard();
        case Roof::steps: return paintSteps();
        case Roof::dome: return paintDome();
        case Roof::spire: return paintSpire();
        case Roof::crown: return paintCrown();
        }
    }

    void paintFlat() {
        const QRectF& walls = house_.walls;
        const double edge = scene_.unit * 0.7;
        painter_.fillRect(QRectF{walls.left() - edge * 0.3, walls.top() - edge, walls.width() + edge * 0.6, edge},
                          wallTone(0.86));
        paintCover(walls.left() - edge * 0.3, walls.right() + edge * 0.3, walls.top() - edge);
        const int what = chance_.below(4);
        const double x = walls.left() + walls.width() * chance_.between(0.15, 0.7);
        if (what == 0) paintChimney(x, walls.top() - edge);
        if (what == 1) {
            const double wide = walls.width() * chance_.between(0.18, 0.3);
            painter_.fillRect(QRectF{x, walls.top() - edge - wide * 0.5, wide, wide * 0.5}, wallTone(0.8));
            paintCover(x, x + wide, walls.top() - edge - wide * 0.5);
        }
        if (what == 2 && distance_.far < 0.5) {
            painter_.fillRect(QRectF{x, walls.top() - edge - 5 * scene_.unit, scene_.unit * 0.35, 5 * scene_.unit},
                              wallTone(0.6));
            painter_.fillRect(
                QRectF{x - scene_.unit, walls.top() - edge - 4.2 * scene_.unit, scene_.unit * 2.4, scene_.unit * 0.3},
                wallTone(0.6));
        }
    }

    void paintGable() {
        const QRectF& walls = house_.walls;
        const double high = walls.width() * chance_.between(0.34, 0.5);
        const double over = walls.width() * 0.05;
        const QPointF peak{walls.center().x(), walls.top() - high};
        fill({walls.topLeft(), peak, walls.topRight()}, wallTone());
        const double thick = std::max(scene_.unit * 0.9, walls.width() * 0.075);
        const bool isSunLeft = scene_.sunTurn < 0;
        paintChimney(walls.left() + walls.width() * chance_.between(0.64, 0.74), walls.top() - high * 0.42);
        // The eaves, seen from the front.
        const QPointF left{walls.left() - over, walls.top() + over * 0.8};
        const QPointF right{walls.right() + over, walls.top() + over * 0.8};
        const QPointF up{0, thick};
        fill({left, peak - up * 0.35, peak + up * 0.75, left + up}, roofTone(isSunLeft ? 1.05 : 0.85));
        fill({right, peak - up * 0.35, peak + up * 0.75, right + up}, roofTone(isSunLeft ? 0.85 : 1.05));
    }

    void paintAlong() {
        const QRectF& walls = house_.walls;
        const double high = std::min(walls.width() * 0.42, walls.height() * 0.7 + 2 * scene_.unit);
        const double over = walls.width() * 0.04;
        const double slope = walls.width() * 0.10;
        paintChimney(walls.left() + walls.width() * chance_.between(0.2, 0.7), walls.top() - high * 0.8);
        fill({{walls.left() - over, walls.top()},
              {walls.left() + slope, walls.top() - high},
              {walls.right() - slope, walls.top() - high},
              {walls.right() + over, walls.top()}},
             roofTone());
        painter_.fillRect(
            QRectF{walls.left() - over, walls.top() - scene_.unit * 0.3, walls.width() + 2 * over, scene_.unit * 0.6},
            roofTone(0.78));
    }

    void paintMansard() {
        const QRectF& walls = house_.walls;
        const double high = std::min(walls.width() * 0.26, 6 * scene_.unit);
        const double inset = walls.width() * 0.06;
        fill({walls.topLeft(),
              {walls.left() + inset, walls.top() - high},
              {walls.right() - inset, walls.top() - high},
              walls.topRight()},
             roofTone());
        paintChimney(walls.left() + walls.width() * chance_.between(0.2, 0.7), walls.top() - high);
        const double pane = scene_.unit * house_.pane;
        if (pane > 0) {
            for (double x = walls.left() + walls.width() * 0.22; x < walls.right() - 2 * pane;
                 x += walls.width() * 0.28) {
                paintPane({x, walls.top() - high * 0.72, pane * 1.3, high * 0.5}, chance_);
            }
        }
    }

    void paintSteps() {
        QRectF step = house_.walls;
        for (const double part : {0.66, 0.40}) {
            const double wide = house_.walls.width() * part;
            const double high = house_.walls.width() * 0.34;
            step = {house_.walls.center().x() - wide / 2, step.top() - high, wide, high};
            painter_.fillRect(step, wallTone(part > 0.5 ? 0.98 : 0.94));
            paintCover(step.left(), step.right(), step.top());
        }
        paintMast(step.top(), std::min(house_.walls.width() * 0.6, 7 * scene_.unit));
    }

    void paintMast(double y, double high) {
        const double wide = scene_.unit * (0.3 + 0.25 * (1 - distance_.far));
        painter_.fillRect(QRectF{house_.walls.center().x() - wide / 2, y - high, wide, high}, wallTone(0.8));
        if (scene_.light.lamps > 0.4) { // a red lamp for those who fly
            painter_.setBrush(QColor{255, 96, 82, 220});
            painter_.drawEllipse(QPointF{house_.walls.center().x(), y - high}, scene_.unit * 0.45, scene_.unit * 0.45);
        }
    }

    void paintDome() {
        const QRectF& walls = house_.walls;
        const double wide = walls.width() * 0.5;
        QPainterPath dome{{walls.left(), walls.top()}};
        dome.cubicTo({walls.left() - wide * 0.1, walls.top() - wide * 1.3},
                     {walls.center().x() - wide * 0.3, walls.top() - wide * 1.5},
                     {walls.center().x(), walls.top() - wide * 1.9});
        dome.cubicTo({walls.center().x() + wide * 0.3, walls.top() - wide * 1.5},
                     {walls.right() + wide * 0.1, walls.top() - wide * 1.3}, {walls.right(), walls.top()});
        painter_.fillPath(dome, roofTone());
    }

    void paintSpire() {
        const QRectF& walls = house_.walls;
        const double high = walls.width() * (house_.pane > 0 ? 1.2 : 1.9);
        const double over = walls.width() * 0.06;
        const QPointF peak{walls.center().x(), walls.top() - high};
        const bool isSunLeft = scene_.sunTurn < 0;
        fill({{walls.left() - over, walls.top()}, peak, {walls.center().x(), walls.top()}},
             roofTone(isSunLeft ? 1.06 : 0.88));
        fill({{walls.right() + over, walls.top()}, peak, {walls.center().x(), walls.top()}},
             roofTone(isSunLeft ? 0.88 : 1.06));
        if (house_.pane > 0) return;
        // The bell's window.
        const double pane = walls.width() * 0.28;
        painter_.setBrush(lampOr(0.5, 0.55));
        painter_.drawRoundedRect(QRectF{walls.center().x() - pane / 2, walls.top() + pane * 0.8, pane, pane * 1.7},
                                 pane / 2, pane / 2);
    }

    void paintCrown() {
        const QRectF& walls = house_.walls;
        const double high = walls.width() * 0.7;
        fill({walls.topLeft(),
              {walls.left() + walls.width() * 0.72, walls.top() - high},
              {walls.right(), walls.top() - high * 0.8},
              walls.topRight()},
             wallTone(0.95));
    }

    QColor lampOr(double chance, double shade) {
        const bool isLit = chance_.part() < chance * litShareAt(scene_.view.hour) * 2 * scene_.light.lamps;
        return isLit ? distance_.far > 0.6 ? QColor{255, 214, 140, 200} : QColor{255, 214, 140} : wallTone(shade);
    }

    void paintPanes() {
        const QRectF& walls = house_.walls;
        const double pane = scene_.unit * house_.pane * 1.15;
        const double stepX = pane * 1.95;
        const double stepY = pane * 2.35;
        const int columns = static_cast<int>((walls.width() - pane * 0.9) / stepX);
        const double bottom = std::min(walls.bottom(), scene_.rect.bottom());
        const int rows = std::min(40, static_cast<int>((bottom - walls.top() - pane * 0.8) / stepY));
        const double inset = (walls.width() - columns * stepX + (stepX - pane)) / 2;
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < columns; ++column) {
                Chance own{house_.seed, static_cast<std::uint64_t>(1000 + row * 64 + column)};
                paintPane(
                    {walls.left() + inset + column * stepX, walls.top() + pane * 1.0 + row * stepY, pane, pane * 1.45},
                    own);
            }
        }
    }

    void paintPane(const QRectF& pane, Chance& chance) {
        const double habit = chance.part(); // some are up late, and some nights
        const double tonight = Chance{house_.seed ^ static_cast<std::uint64_t>(scene_.view.hour), chance.next()}.part();
        const double warmth = chance.part();
        const double dusk = chance.part(); // some wait longer than others before they light a lamp
        const double share = litShareAt(scene_.view.hour) * 0.72;
        const bool isLit = habit * 0.6 + tonight * 0.4 < 0.14 + 0.72 * share - 0.14 * rise(0.2, 0.05, share) &&
                           dusk < scene_.light.lamps * 1.2;
        const double glass = 1 - 0.75 * distance_.far;
        if (!isLit) {
            // By day a pane mirrors some sky, by night it is a shade.
            const Tone own = distance_.seen(scene_, house_.wall * 0.62F);
            const Tone mirrored = blend(own, scene_.light.middle, warmth > 0.82 ? 0.55 : 0.16);
            painter_.fillRect(pane, mirrored.colour(0.75 * glass));
            return;
        }
        const Tone lamp = warmth > 0.94 ? Tone{188, 208, 236} : blend(Tone{255, 196, 112}, Tone{255, 226, 166}, warmth);
        const double clear = (1 - 0.55 * distance_.far) * (1 - 0.75 * scene_.view.mist * (0.4 + distance_.far)) *
                             (0.45 + 0.55 * scene_.light.lamps);
        painter_.fillRect(pane, lamp.colour(std::clamp(clear, 0.0, 1.0)));
    }

    QPainter& painter_;
    const ViewScene& scene_;
    const House& house_;
    Distance distance_;
    Chance chance_;
};

} // namespace

void paintHouse(QPainter& painter, const ViewScene& scene, const House& house, Distance distance) {
    HousePainter{painter, scene, house, distance}.paint();
}

void paintTree(QPainter& painter, const ViewScene& scene, QPointF foot, double height, bool isConifer,
               Distance distance, Chance& chance) {
    const Tone leaf = blend(isConifer ? Tone{78, 106, 88} : blend(Tone{112, 136, 82}, Tone{86, 116, 78}, chance.part()),
                            {240, 244, 250}, 0.62 * scene.view.snowOnRoofs);
    const Tone dark = leaf * 0.82F;
    if (isConifer) {
        for (int i = 0; i < 3; ++i) {
            const double y = foot.y() - height * (0.12 + 0.26 * i);
            const double wide = height * (0.26 - 0.06 * i);
            painter.setBrush(distance.seen(scene, blend(dark, leaf, 0.5 * i)).colour());
            painter.drawPolygon(QPolygonF{{{foot.x() - wide, y}, {foot.x(), y - height * 0.42}, {foot.x() + wide, y}}});
        }
        return;
    }
    const auto crown = [&](double x, double y, double size, Tone tone) {
        painter.setBrush(distance.seen(scene, tone).colour());
        painter.drawEllipse(foot + QPointF{x * height, -y * height}, size * height, size * height * 0.92);
    };
    painter.fillRect(QRectF{foot.x() - height * 0.04, foot.y() - height * 0.4, height * 0.08, height * 0.4},
                     distance.seen(scene, {104, 84, 70}).colour());
    crown(-0.16, 0.48, 0.24, dark);
    crown(0.18, 0.52, 0.24, dark);
    crown(0.0, 0.62, 0.30, blend(dark, leaf, 0.6));
    crown(scene.sunTurn < 0 ? -0.09 : 0.09, 0.70, 0.19, leaf);
}

} // namespace lumaro
