// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Geometry/InkEraser.h"

#include "LumaroCore/Geometry/InkLine.h"
#include "LumaroCore/Geometry/InkWidths.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace lumaro {
namespace {

// A part of a segment, from 0 at its beginning to 1 at its end. As it comes it is empty.
struct Interval {
    double low = 1;
    double high = 0;

    bool isEmpty() const { return !(low < high); }
    Interval cutBy(Interval other) const { return {std::max(low, other.low), std::min(high, other.high)}; }
    Interval joined(Interval other) const {
        if (isEmpty()) return other;
        if (other.isEmpty()) return *this;
        return {std::min(low, other.low), std::max(high, other.high)};
    }
};

constexpr Interval wholeSegment{0, 1};
constexpr Interval wholeLine{-std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};

// Segments shorter than 1e-12 points are points: their direction is noise.
constexpr double pointLengthSquared = 1e-24;

// Where a + t d lies inside a circle.
Interval insideCircle(Point a, Point d, Point centre, double radius) {
    const Point toCentre = centre - a;
    const double lengthSquared = dot(d, d);
    if (lengthSquared < pointLengthSquared) return std::hypot(toCentre.x, toCentre.y) < radius ? wholeLine : Interval{};
    const double nearest = dot(toCentre, d) / lengthSquared;
    const double length = std::sqrt(lengthSquared);
    const double aside = std::abs(cross(toCentre, d)) / length;
    if (aside >= radius) return {};
    const double half = std::sqrt((radius - aside) * (radius + aside)) / length;
    return {nearest - half, nearest + half};
}

// Where start + t step lies between two limits.
Interval insideStrip(double start, double step, double low, double high) {
    if (step == 0) return start > low && start < high ? wholeLine : Interval{};
    const double toLow = (low - start) / step;
    const double toHigh = (high - start) / step;
    return {std::min(toLow, toHigh), std::max(toLow, toHigh)};
}

// What the tip sweeps over, a capsule, in axes of its own: x runs from the beginning of its way to the end.
class SweptTip {
public:
    SweptTip(Point from, Point to, double radius)
        : from_(from), axis_(1, 0), length_(distance(from, to)), radius_(radius) {
        if (length_ > 0) axis_ = {(to.x - from.x) / length_, (to.y - from.y) / length_};
    }

    // The part of the segment from `a` to `b` that is strictly inside. The capsule is convex, so it is one interval: it
    // spans those of the two round ends and of the strip between them.
    Interval overlap(Point a, Point b) const {
        const Point start = local(a);
        const Point end = local(b);
        if (isBeside(start, end)) return {};
        const Point step = end - start;
        const Interval strip =
            insideStrip(start.x, step.x, 0, length_).cutBy(insideStrip(start.y, step.y, -radius_, radius_));
        return wholeSegment.cutBy(strip)
            .joined(wholeSegment.cutBy(insideCircle(start, step, {0, 0}, radius_)))
            .joined(wholeSegment.cutBy(insideCircle(start, step, {length_, 0}, radius_)));
    }

private:
    Point local(Point p) const { return {dot(p - from_, axis_), cross(axis_, p - from_)}; }

    // Most of a board is: this spares it the roots and divisions.
    bool isBeside(Point a, Point b) const {
        return std::max(a.x, b.x) <= -radius_ || std::min(a.x, b.x) >= length_ + radius_ ||
               std::max(a.y, b.y) <= -radius_ || std::min(a.y, b.y) >= radius_;
    }

    Point from_;
    Point axis_;
    double length_;
    double radius_;
};

// The end of the segment that begins at a drawn point; the point itself where the line ends or breaks.
Point segmentEnd(const std::vector<Point>& points, std::size_t begin) {
    const bool goesOn = begin + 1 < points.size() && isInkPoint(points[begin + 1]);
    return points[goesOn ? begin + 1 : begin];
}

bool isTouched(const std::vector<Point>& points, const SweptTip& tip) {
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (isInkPoint(points[i]) && !tip.overlap(points[i], segmentEnd(points, i)).isEmpty()) return true;
    }
    return false;
}

// Puts segments that follow each other together to pieces of a stroke.
class PieceCollector {
public:
    PieceCollector(const InkStroke& stroke, std::vector<InkStroke>& pieces) : stroke_(stroke), pieces_(pieces) {}

    void addSegment(Point a, Point b) {
        if (points_.empty()) points_.push_back(a);
        points_.push_back(b);
        length_ += distance(a, b);
    }

    void endPiece() {
        if (length_ >= usableInkWidth(stroke_.width) / 2) {
            pieces_.push_back({stroke_.ink, stroke_.width, std::move(points_)});
        }
        points_.clear();
        length_ = 0;
    }

private:
    const InkStroke& stroke_;
    std::vector<InkStroke>& pieces_;
    std::vector<Point> points_;
    double length_ = 0;
};

void cutStroke(const InkStroke& stroke, const SweptTip& tip, std::vector<InkStroke>& pieces) {
    PieceCollector collector{stroke, pieces};
    const bool isLive = isLiveInk(stroke.points);
    const auto widths = inkWidths(stroke.points);
    // Where the segment that ends at a point is cut; a live line goes on being as wide as it was there.
    const auto cut = [&](std::size_t end, double t) {
        const Point place = between(stroke.points[end - 1], stroke.points[end], t);
        return isLive ? inkPoint(place, std::lerp(widths[end - 1], widths[end], t)) : place;
    };
    for (std::size_t i = 1; i < stroke.points.size(); ++i) {
        const Point a = stroke.points[i - 1];
        const Point b = stroke.points[i];
        if (!isInkPoint(a) || !isInkPoint(b)) {
            collector.endPiece();
            continue;
        }
        const Interval erased = tip.overlap(a, b);
        if (erased.isEmpty()) {
            collector.addSegment(a, b);
            continue;
        }
        if (erased.low > 0) collector.addSegment(a, cut(i, erased.low));
        collector.endPiece();
        if (erased.high < 1) collector.addSegment(cut(i, erased.high), b);
    }
    collector.endPiece();
}

} // namespace

bool inkHit(const InkStroke& stroke, Point point, double radius) {
    if (!(radius >= 0) || !isFinite(point)) return false;
    const auto& points = stroke.points;
    const auto widths = inkWidths(points);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double width = std::max(widths[i], widths[std::min(i + 1, points.size() - 1)]);
        const double reach = radius + usableInkWidth(stroke.width) * width / 2;
        if (isInkPoint(points[i]) && segmentDistance(point, points[i], segmentEnd(points, i)) <= reach) return true;
    }
    return false;
}

std::vector<InkStroke> eraseInk(std::span<const InkStroke> strokes, Point from, Point to, double radius) {
    if (!(radius > 0) || !isInkPoint(from) || !isInkPoint(to)) return {strokes.begin(), strokes.end()};
    const SweptTip tip{from, to, radius};
    std::vector<InkStroke> left;
    left.reserve(strokes.size());
    for (const auto& stroke : strokes) {
        if (isTouched(stroke.points, tip)) {
            cutStroke(stroke, tip, left);
        } else {
            left.push_back(stroke);
        }
    }
    return left;
}

} // namespace lumaro
