// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Geometry/InkSmoothing.h"

#include "LumaroCore/Geometry/InkLine.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace lumaro {
namespace {

// Splitting at the farthest point may peel points off one by one. From this depth on ranges are halved instead: that
// may keep a point too many, but never costs tolerance, and bounds the work.
constexpr int maxUnevenDepth = 48;

struct OpenRange {
    std::size_t first;
    std::size_t last;
    int depth;
};

struct Farthest {
    std::size_t index;
    double away;
};

Farthest farthestFromChord(std::span<const Point> points, const OpenRange& range) {
    Farthest found{range.first, 0};
    for (std::size_t i = range.first + 1; i < range.last; ++i) {
        const double away = segmentDistance(points[i], points[range.first], points[range.last]);
        if (away > found.away) found = {i, away};
    }
    return found;
}

// Samples lie a point apart; short lines have no fewer than this many, so that the filter, which blurs over about two
// samples, leaves small letters and the rings of dots as they are.
constexpr double sampleSpacing = 1;
constexpr double minSamples = 64;
constexpr double maxSamples = 32768;
constexpr int filterPasses = 8;

double lineLength(std::span<const Point> points) {
    double length = 0;
    for (std::size_t i = 1; i < points.size(); ++i) length += distance(points[i - 1], points[i]);
    return length;
}

// `count` points, at least two, that divide the line evenly.
std::vector<Point> resampled(std::span<const Point> points, double length, std::size_t count) {
    const double step = length / static_cast<double>(count - 1);
    std::vector<Point> samples{points.front()};
    samples.reserve(count);
    std::size_t next = 1;
    double passed = 0;
    double segment = distance(points[0], points[1]);
    while (samples.size() + 1 < count) {
        const double place = step * static_cast<double>(samples.size());
        while (passed + segment < place && next + 1 < points.size()) {
            passed += segment;
            segment = distance(points[next], points[next + 1]);
            ++next;
        }
        samples.push_back(between(points[next - 1], points[next], std::clamp((place - passed) / segment, 0.0, 1.0)));
    }
    samples.push_back(points.back());
    return samples;
}

// The binomial filter 1-2-1, whose passes add up to a Gaussian of two samples' deviation. The ends stay.
void smooth(std::span<Point> samples) {
    for (int pass = 0; pass < filterPasses; ++pass) {
        Point before = samples.front();
        for (std::size_t i = 1; i + 1 < samples.size(); ++i) {
            const Point here = samples[i];
            samples[i] = (before + here * 2 + samples[i + 1]) * 0.25;
            before = here;
        }
    }
}

std::vector<Point> usablePoints(std::span<const Point> raw) {
    std::vector<Point> points;
    points.reserve(raw.size());
    for (const Point p : raw) {
        if (isInkPoint(p) && (points.empty() || points.back() != p)) points.push_back(p);
    }
    return points;
}

// Even spacing makes the filter act on lengths of the line, whatever the pen's speed and the pointer's rate; two
// points' deviation takes out pixel steps and tremor, but moves a curve of radius r inwards by only about 2 / r points.
std::vector<Point> smoothed(std::vector<Point> points) {
    const double length = lineLength(points);
    if (length * inkSteps < 1) return points;
    const double count = std::clamp(length / sampleSpacing, minSamples, maxSamples);
    auto samples = resampled(points, length, static_cast<std::size_t>(count));
    smooth(samples);
    return samples;
}

} // namespace

std::vector<Point> simplified(std::span<const Point> points, double tolerance) {
    if (points.size() < 3) return {points.begin(), points.end()};
    const double allowed = std::max(0.0, tolerance); // 0 for a NaN
    std::vector<std::uint8_t> kept(points.size(), 0);
    kept.front() = kept.back() = 1;
    std::vector<OpenRange> open{{.first = 0, .last = points.size() - 1, .depth = 0}};
    while (!open.empty()) {
        const OpenRange range = open.back();
        open.pop_back();
        const Farthest farthest = farthestFromChord(points, range);
        if (farthest.away <= allowed) continue;
        const bool uneven = range.depth < maxUnevenDepth;
        const std::size_t middle = uneven ? farthest.index : range.first + (range.last - range.first) / 2;
        kept[middle] = 1;
        open.push_back({range.first, middle, range.depth + 1});
        open.push_back({middle, range.last, range.depth + 1});
    }
    std::vector<Point> line;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (kept[i] != 0) line.push_back(points[i]);
    }
    return line;
}

std::vector<Point> simplifiedToFit(std::span<const Point> points, double tolerance, std::size_t maxPoints) {
    auto line = simplified(points, tolerance);
    double wider = std::max(1 / inkSteps, 2 * tolerance);
    for (; line.size() > maxPoints && std::isfinite(wider); wider *= 2) line = simplified(points, wider);
    return line;
}

InkStroke inkStroke(std::span<const Point> raw, std::string ink, double width) {
    const double usableWidth = usableInkWidth(width);
    auto line = smoothed(usablePoints(raw));
    line = simplifiedToFit(line, std::clamp(usableWidth / 20, 0.1, 0.3), BoardSpec::maxPointsPerStroke);
    roundInk(line);
    return {std::move(ink), usableWidth, std::move(line)};
}

} // namespace lumaro
