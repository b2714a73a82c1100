// SPDX-License-Identifier: Apache-2.0
// What it takes to paint the cards that show a sky, at two pixels a point on one core, in the skies that have most in
// them.
#include "LumaroCore/BoardModel/BoardSpec.h"
#include "Widgets/Items/ItemPainting.h"

#include <QtCore/QThreadPool>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <benchmark/benchmark.h>

#include <cstdlib>

namespace {

using namespace lumaro;

constexpr Scenery metropolis{.seed = 12, .people = 9'000'000, .isByTheSea = true, .hills = 0};
constexpr Scenery mountains{.seed = 77, .people = 41'000, .isByTheSea = true, .hills = 3};

SkyView storm(Scenery scenery) {
    SkyView view;
    view.sky = Sky::storm;
    view.sunAltitude = 12;
    view.sunAzimuth = 220;
    view.moon = {.altitude = 30, .azimuth = 150, .lit = 0.7, .brightLimb = -80, .isWaxing = true};
    view.clouds = {.low = 0.9, .middle = 0.9, .high = 0.9};
    view.fall = 1;
    view.mist = 0.3;
    view.windKmh = 60;
    view.windFrom = 250;
    view.scenery = scenery;
    return view;
}

SkyView fairNight(Scenery scenery) {
    auto view = storm(scenery);
    view.sky = Sky::night;
    view.sunAltitude = -20;
    view.clouds = {.low = 0.4, .middle = 0.4, .high = 0.4};
    view.fall = 0;
    view.hour = 21;
    return view;
}

void paint(benchmark::State& state, const ItemFace& face, Size points) {
    constexpr double scale = 2;
    const QSizeF size{points.width, points.height};
    QImage picture{(size * scale).toSize(), QImage::Format_ARGB32_Premultiplied};
    for (auto step : state) {
        picture.fill(Qt::transparent);
        QPainter painter{&picture};
        painter.scale(scale, scale);
        paintItem(painter, face, size);
    }
}

void window(benchmark::State& state, const SkyView& view) {
    WindowFace face;
    face.view = view;
    face.sky = view.sky;
    face.place = QStringLiteral("alfama");
    face.time = QStringLiteral("21:14");
    face.temperature = QStringLiteral("17°");
    paint(state, face, BoardSpec::locationWindowSize);
}

void clocks(benchmark::State& state) {
    ClocksFace face;
    face.mine = {QStringLiteral("mia"), QStringLiteral("07:40"), {}, storm(metropolis), Sky::storm};
    face.theirs = {QStringLiteral("bo"), QStringLiteral("21:40"), {}, fairNight(mountains), Sky::night};
    face.between = QStringLiteral("14 hours ahead");
    paint(state, face, BoardSpec::timezonesCardSize);
}

BENCHMARK_CAPTURE(window, stormOverAMetropolis, storm(metropolis))->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(window, stormInTheMountains, storm(mountains))->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(window, nightOverAMetropolis, fairNight(metropolis))->Unit(benchmark::kMillisecond);
BENCHMARK(clocks)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const QGuiApplication application{argc, argv};
    benchmark::Initialize(&argc, argv);
    // Where the application paints cards: there Qt does not share out the lines of each fill.
    QThreadPool::globalInstance()->start([] { benchmark::RunSpecifiedBenchmarks(); });
    QThreadPool::globalInstance()->waitForDone();
    return 0;
}
