// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/InkRibbon.h"

#include "LumaroCore/Geometry/InkCurve.h"
#include "LumaroCore/Geometry/InkLine.h"
#include "LumaroCore/Geometry/InkWidths.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace lumaro {
namespace {

/// A place of the middle of the line, and how far the ink reaches to either side.
struct Nib {
    Point at;
    double reach = 0;
};

QPointF pointAt(Point point) {
    return {point.x, point.y};
}

Point along(Point a, Point b) {
    const double length = distance(a, b);
    return length > 0 ? (b - a) * (1 / length) : Point{};
}

constexpr double stride = 4;       // points from one nib to the next on a straight line
constexpr double stepTurn = 0.035; // radians from one to the next in a curve
constexpr double maxSteps = 40;

/// The nibs along the line, none twice at one place.
std::vector<Nib> nibsAlong(const InkStroke& stroke) {
    const auto widths = inkWidths(stroke.points);
    const double half = usableInkWidth(stroke.width) / 2;
    std::vector<Nib> given;
    for (std::size_t i = 0; i < stroke.points.size(); ++i) given.push_back({stroke.points[i], half * widths[i]});
    std::vector<Nib> nibs{given.front()};
    for (std::size_t i = 0; i + 1 < given.size(); ++i) {
        const Nib& begin = given[i];
        const Nib& end = given[i + 1];
        const InkCurve curve{given[i > 0 ? i - 1 : i].at, begin.at, end.at,
                             given[std::min(i + 2, given.size() - 1)].at};
        const double wanted = std::max(curve.chord() / stride, curve.turn() / stepTurn);
        const double steps = std::clamp(std::ceil(wanted), 1.0, maxSteps);
        for (double step = 1; step <= steps; ++step) {
            const double t = step / steps;
            // Leaves each width slowly and comes to the next slowly: no kink at the sides.
            nibs.push_back({curve.at(t), std::lerp(begin.reach, end.reach, t * t * (3 - 2 * t))});
        }
    }
    const auto repeats =
        std::ranges::unique(nibs, [](const Nib& a, const Nib& b) { return distance(a.at, b.at) < 1e-6; });
    nibs.erase(repeats.begin(), repeats.end());
    return nibs;
}

/// Puts together what covers the line: bands that bend gently, and discs where it turns sharply and at its ends. All
/// run the same way round, so that they join where they overlap.
class RibbonMaker {
public:
    explicit RibbonMaker(const std::vector<Nib>& nibs) {
        path_.setFillRule(Qt::WindingFill);
        addDisc(nibs.front());
        if (nibs.size() == 1) return;
        addDisc(nibs.back());
        for (std::size_t i = 0; i + 1 < nibs.size(); ++i) {
            const Point way = along(nibs[i].at, nibs[i + 1].at);
            const bool goesOn = i > 0 && isGentle(nibs, i);
            const Point before = i > 0 ? along(nibs[i - 1].at, nibs[i].at) : way;
            if (i > 0 && !goesOn) {
                addSides(nibs[i], before);
                closeBand();
                addDisc(nibs[i]);
            }
            addSides(nibs[i], goesOn ? along({}, before + way) : way);
        }
        addSides(nibs.back(), along(nibs[nibs.size() - 2].at, nibs.back().at));
        closeBand();
    }

    QPainterPath take() { return std::move(path_); }

private:
    /// Whether the inner side still goes forward where the line turns.
    static bool isGentle(const std::vector<Nib>& nibs, std::size_t i) {
        const Point before = nibs[i].at - nibs[i - 1].at;
        const Point after = nibs[i + 1].at - nibs[i].at;
        const double turn = InkCurve::turnBetween(before, after);
        const double shortest = std::min(std::hypot(before.x, before.y), std::hypot(after.x, after.y));
        return turn < 0.5 && nibs[i].reach * turn < 0.9 * shortest;
    }

    void addSides(const Nib& nib, Point way) {
        const Point aside{way.y * nib.reach, -way.x * nib.reach};
        left_.push_back(pointAt(nib.at + aside));
        right_.push_back(pointAt(nib.at - aside));
    }

    void closeBand() {
        QPolygonF band = left_;
        std::ranges::reverse_copy(right_, std::back_inserter(band));
        path_.addPolygon(band);
        path_.closeSubpath();
        left_.clear();
        right_.clear();
    }

    void addDisc(const Nib& nib) {
        const int corners = std::clamp(static_cast<int>(10 + 4 * nib.reach), 12, 48);
        QPolygonF disc;
        for (int i = 0; i < corners; ++i) {
            const double angle = 2 * std::numbers::pi * i / corners;
            disc.append(pointAt(nib.at + Point{std::cos(angle), std::sin(angle)} * nib.reach));
        }
        path_.addPolygon(disc);
        path_.closeSubpath();
    }

    QPainterPath path_;
    QPolygonF left_;
    QPolygonF right_;
};

} // namespace

QPainterPath inkPath(const InkStroke& stroke) {
    std::vector<Point> points;
    for (const auto point : stroke.points) {
        if (isInkPoint(point)) points.push_back(point);
    }
    if (points.empty()) return {};
    QPainterPath path{pointAt(points.front())};
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        path.quadTo(pointAt(points[i]), pointAt(between(points[i], points[i + 1], 0.5)));
    }
    // A dot is a line to itself; its round caps make it one.
    path.lineTo(pointAt(points.back()) + (points.size() == 1 ? QPointF{0.01, 0} : QPointF{}));
    return path;
}

QPainterPath inkRibbon(const InkStroke& stroke) {
    return RibbonMaker{nibsAlong(stroke)}.take();
}

} // namespace lumaro
