// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Geometry/InkSmoothing.h"

#include "LumaroCore/Geometry/InkCurve.h"
#include "LumaroCore/Geometry/InkLine.h"
#include "LumaroCore/Geometry/InkWidths.h"

#include <algorithm>
#include <cmath>
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

// A line, and how wide it is at each of its points; no widths where it is equally wide.
struct Course {
    std::span<const Point> points;
    std::span<const double> widths;
};

// What a width that is wrong by all of itself counts for, in points. An error of the width is seen at both sides of a
// line, but looks like a tremor of the hand rather than like another line.
constexpr double widthWeight = 2.5;

double away(const Course& line, std::size_t i, const OpenRange& range) {
    const double aside = segmentDistance(line.points[i], line.points[range.first], line.points[range.last]);
    if (line.widths.empty()) return aside;
    const double part = static_cast<double>(i - range.first) / static_cast<double>(range.last - range.first);
    const double width = std::lerp(line.widths[range.first], line.widths[range.last], part);
    return std::max(aside, widthWeight * std::abs(line.widths[i] - width));
}

Farthest farthestFromChord(const Course& line, const OpenRange& range) {
    Farthest found{range.first, 0};
    for (std::size_t i = range.first + 1; i < range.last; ++i) {
        const double distance = away(line, i, range);
        if (distance > found.away) found = {i, distance};
    }
    return found;
}

// The places of the points that stay.
std::vector<std::size_t> kept(const Course& line, double tolerance) {
    const std::size_t count = line.points.size();
    std::vector<std::uint8_t> stays(count, count < 3 ? 1 : 0);
    std::vector<OpenRange> open;
    if (count >= 3) {
        stays.front() = stays.back() = 1;
        open.push_back({.first = 0, .last = count - 1, .depth = 0});
    }
    const double allowed = std::max(0.0, tolerance); // 0 for a NaN
    while (!open.empty()) {
        const OpenRange range = open.back();
        open.pop_back();
        const Farthest farthest = farthestFromChord(line, range);
        if (farthest.away <= allowed) continue;
        const bool uneven = range.depth < maxUnevenDepth;
        const std::size_t middle = uneven ? farthest.index : range.first + (range.last - range.first) / 2;
        stays[middle] = 1;
        open.push_back({range.first, middle, range.depth + 1});
        open.push_back({middle, range.last, range.depth + 1});
    }
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < count; ++i) {
        if (stays[i] != 0) places.push_back(i);
    }
    return places;
}

// With the tolerance doubled until they are few enough.
std::vector<std::size_t> keptToFit(const Course& line, double tolerance, std::size_t maxPoints) {
    auto places = kept(line, tolerance);
    double wider = std::max(1 / inkSteps, 2 * tolerance);
    for (; places.size() > maxPoints && std::isfinite(wider); wider *= 2) places = kept(line, wider);
    return places;
}

std::vector<Point> pointsAt(std::span<const Point> points, const std::vector<std::size_t>& places) {
    std::vector<Point> line;
    line.reserve(places.size());
    for (const auto place : places) line.push_back(points[place]);
    return line;
}

// Those of the line where it is live.
std::vector<double> widthsToKeep(std::span<const Point> points) {
    return isLiveInk(points) ? inkWidths(points) : std::vector<double>{};
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

// A line by points that divide it evenly, and what was told of it at each of them.
struct Samples {
    std::vector<Point> points;
    std::vector<double> widths;
};

// `count` of them, at least two. `widths` are those at `points`, or none.
Samples resampled(std::span<const Point> points, std::span<const double> widths, double length, std::size_t count) {
    const double step = length / static_cast<double>(count - 1);
    Samples samples;
    samples.points.reserve(count);
    const auto take = [&](std::size_t next, double t) {
        samples.points.push_back(between(points[next - 1], points[next], t));
        if (!widths.empty()) samples.widths.push_back(std::lerp(widths[next - 1], widths[next], t));
    };
    take(1, 0);
    std::size_t next = 1;
    double passed = 0;
    double segment = distance(points[0], points[1]);
    while (samples.points.size() + 1 < count) {
        const double place = step * static_cast<double>(samples.points.size());
        while (passed + segment < place && next + 1 < points.size()) {
            passed += segment;
            segment = distance(points[next], points[next + 1]);
            ++next;
        }
        take(next, std::clamp((place - passed) / segment, 0.0, 1.0));
    }
    take(points.size() - 1, 1);
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

// Ink flows on: a line becomes wider or thinner within about so many points, whatever the hand does.
double inkFlow(double width) {
    return 4 + 0.8 * std::min(width, 20.0);
}

void letFlow(std::vector<double>& widths, double spacing, double flow) {
    const double keep = std::exp(-spacing / flow);
    for (std::size_t i = 1; i < widths.size(); ++i) widths[i] = std::lerp(widths[i], widths[i - 1], keep);
    for (std::size_t i = widths.size(); i > 1; --i) widths[i - 2] = std::lerp(widths[i - 2], widths[i - 1], keep);
}

// Even spacing makes the filter act on lengths of the line, whatever the pen's speed and the pointer's rate; two
// points' deviation takes out pixel steps and tremor, but moves a curve of radius r inwards by only about 2 / r points.
Samples smoothed(std::vector<Point> points, std::vector<double> widths, double flow) {
    const double length = lineLength(points);
    if (length * inkSteps < 1) return {std::move(points), std::move(widths)};
    const double count = std::clamp(length / sampleSpacing, minSamples, maxSamples);
    auto samples = resampled(points, widths, length, static_cast<std::size_t>(count));
    smooth(samples.points);
    letFlow(samples.widths, length / count, flow);
    return samples;
}

// The stroke through these points, which are usable; `widths` are those at the points, or none.
InkStroke strokeThrough(std::vector<Point> points, std::vector<double> widths, std::string ink, double width) {
    const double usableWidth = usableInkWidth(width);
    const auto line = smoothed(std::move(points), std::move(widths), inkFlow(usableWidth));
    // A live line is painted through its points, which shows more of them.
    const double tolerance = std::clamp(usableWidth / 20, 0.1, line.widths.empty() ? 0.3 : 0.2);
    InkStroke stroke{std::move(ink), usableWidth, {}};
    for (const auto place : keptToFit({line.points, line.widths}, tolerance, BoardSpec::maxPointsPerStroke)) {
        const Point p = line.points[place];
        stroke.points.push_back(line.widths.empty() ? roundedInk(p) : inkPoint(p, line.widths[place]));
    }
    const auto repeats = std::ranges::unique(stroke.points);
    stroke.points.erase(repeats.begin(), repeats.end());
    return stroke;
}

// A pointer tells whole pixels, and a fast one few of them. Two passes of Taubin's filter (1995) take out what jumps
// from sample to sample and shrink nothing; 0.5 of the way to the neighbours' middle and a little more back.
void calm(std::vector<Point>& points) {
    for (const double part : {0.5, -0.53, 0.5, -0.53}) {
        Point before = points.front();
        for (std::size_t i = 1; i + 1 < points.size(); ++i) {
            const Point here = points[i];
            points[i] = between(here, between(before, points[i + 1], 0.5), part);
            before = here;
        }
    }
}

// Rounds what lies between samples that are far apart: a straight way from one to the next would be seen.
constexpr double closeSamples = 2;
constexpr double maxBetween = 16;

Samples rounded(const std::vector<Point>& points, const std::vector<double>& widths) {
    Samples samples{{points.front()}, {widths.front()}};
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const InkCurve curve{points[i > 0 ? i - 1 : i], points[i], points[i + 1],
                             points[std::min(i + 2, points.size() - 1)]};
        const auto steps = static_cast<int>(std::clamp(std::ceil(curve.chord() / closeSamples), 1.0, maxBetween));
        for (int step = 1; step <= steps; ++step) {
            const double way = static_cast<double>(step) / steps;
            samples.points.push_back(curve.at(way));
            samples.widths.push_back(std::lerp(widths[i], widths[i + 1], way));
        }
    }
    return samples;
}

// A pen that is slow leaves more ink: at this many points a second half of what it can.
constexpr double halfSpeed = 600;
constexpr double speedBend = 1.5;
// Speed is taken over so many seconds, so that the pointer's rate does not matter.
constexpr double speedSpan = 0.03;

double widthAtSpeed(double speed) {
    return thinInk + (thickInk - thinInk) / (1 + std::pow(speed / halfSpeed, speedBend));
}

double widthAtPressure(double pressure) {
    return thinInk + (thickInk - thinInk) * std::pow(std::clamp(pressure, 0.0, 1.0), 0.8);
}

// How fast the pen was at each sample, in points a second; negative where no time is known to have passed.
std::vector<double> speedsOf(std::span<const PenSample> samples) {
    std::vector<double> passed(samples.size(), 0);
    for (std::size_t i = 1; i < samples.size(); ++i) {
        passed[i] = passed[i - 1] + distance(samples[i - 1].place, samples[i].place);
    }
    std::vector<double> speeds(samples.size(), -1);
    std::size_t first = 0;
    std::size_t last = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        while (first + 1 < i && samples[i].seconds - samples[first + 1].seconds >= speedSpan / 2) ++first;
        last = std::max(last, i);
        while (last + 1 < samples.size() && samples[last].seconds - samples[i].seconds < speedSpan / 2) ++last;
        const double span = samples[last].seconds - samples[first].seconds;
        if (span > 0) speeds[i] = (passed[last] - passed[first]) / span;
    }
    return speeds;
}

} // namespace

std::vector<Point> simplified(std::span<const Point> points, double tolerance) {
    const auto widths = widthsToKeep(points);
    return pointsAt(points, kept({points, widths}, tolerance));
}

std::vector<Point> simplifiedToFit(std::span<const Point> points, double tolerance, std::size_t maxPoints) {
    const auto widths = widthsToKeep(points);
    return pointsAt(points, keptToFit({points, widths}, tolerance, maxPoints));
}

InkStroke inkStroke(std::span<const Point> raw, std::string ink, double width) {
    return strokeThrough(usablePoints(raw), {}, std::move(ink), width);
}

InkStroke penStroke(std::span<const PenSample> raw, std::string ink, double width) {
    std::vector<PenSample> samples;
    std::vector<Point> points;
    for (const auto& sample : raw) {
        if (!isInkPoint(sample.place) || !std::isfinite(sample.seconds)) continue;
        // A pen that rests has passed no way, but time.
        if (!points.empty() && points.back() == sample.place) continue;
        samples.push_back(sample);
        points.push_back(sample.place);
    }
    const auto speeds = speedsOf(samples);
    std::vector<double> widths;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const auto& pressure = samples[i].pressure;
        const double atSpeed = speeds[i] < 0 ? 1 : widthAtSpeed(speeds[i]);
        widths.push_back(pressure && std::isfinite(*pressure) ? widthAtPressure(*pressure) : atSpeed);
    }
    const bool tells = std::ranges::any_of(widths, [](double part) { return part != 1; });
    if (!tells || points.size() < 2) return strokeThrough(std::move(points), {}, std::move(ink), width);
    calm(points);
    auto line = rounded(points, widths);
    return strokeThrough(std::move(line.points), std::move(line.widths), std::move(ink), width);
}

} // namespace lumaro
