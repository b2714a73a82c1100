// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Offline/WindowSheet.h"

#include "Lumaro/UI/Board/SkyViews.h"
#include "Widgets/Items/Window/ViewPainting.h"

#include <QtCore/QDateTime>
#include <QtCore/QTimeZone>
#include <QtGui/QPainter>

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace lumaro {
namespace {

struct City {
    const char* name = "";
    const char* zone = "";
    Coordinates point;
    Scenery scenery;
};

constexpr std::array<City, 8> cities{{
    {"lisbon", "Europe/Lisbon", {38.71, -9.14}, {4711, 550'000, true, 1}},
    {"tromso", "Europe/Oslo", {69.65, 18.96}, {77, 41'000, true, 3}},
    {"newyork", "America/New_York", {40.71, -74.01}, {99, 8'800'000, false, 0}},
    {"reykjavik", "Atlantic/Reykjavik", {64.15, -21.94}, {31, 130'000, true, 2}},
    {"singapore", "Asia/Singapore", {1.35, 103.82}, {12, 5'600'000, true, 0}},
    {"sydney", "Australia/Sydney", {-33.87, 151.21}, {21, 4'600'000, true, 0}},
    {"essen", "Europe/Berlin", {51.45, 7.01}, {8, 30'000, false, 1}},
    {"hamlet", "Europe/Vienna", {47.3, 10.9}, {5, 900, false, 2}},
}};

Weather weatherOf(std::int64_t code, double low, double middle, double high) {
    Weather weather;
    weather.code = code;
    weather.tempC = code == 73 ? -2 : 14;
    weather.cloudLow = low;
    weather.cloudMid = middle;
    weather.cloudHigh = high;
    weather.windKmh = code == 95 ? 44 : 16;
    weather.windDeg = 260;
    if (code == 45) weather.visibilityM = 400;
    return weather;
}

std::vector<Weather> skies() {
    return {weatherOf(0, 5, 0, 25),    weatherOf(2, 40, 20, 30),  weatherOf(3, 15, 80, 60),  weatherOf(45, 30, 0, 0),
            weatherOf(63, 85, 90, 50), weatherOf(73, 90, 80, 50), weatherOf(95, 100, 90, 80)};
}

} // namespace

std::vector<std::string> sheetCities() {
    std::vector<std::string> all;
    for (const auto& city : cities) all.emplace_back(city.name);
    return all;
}

std::optional<QImage> windowSheet(std::string_view city, std::chrono::year_month_day day, double density) {
    const auto* const shown = std::ranges::find_if(cities, [&](const City& one) { return one.name == city; });
    if (shown == cities.end()) return std::nullopt;
    constexpr QSizeF glass{248, 170};
    constexpr double gap = 8;
    constexpr int hours = 24;
    const auto weathers = skies();
    const QSizeF step{glass.width() + gap, glass.height() + gap};
    const QSizeF size{gap + step.width() * static_cast<double>(weathers.size()), gap + step.height() * hours};
    QImage sheet{(size * density).toSize(), QImage::Format_RGB32};
    sheet.fill(QColor{250, 243, 229});
    QPainter painter{&sheet};
    painter.scale(density, density);
    const QTimeZone zone{shown->zone};
    const QDate date{static_cast<int>(day.year()), static_cast<int>(static_cast<unsigned>(day.month())),
                     static_cast<int>(static_cast<unsigned>(day.day()))};
    for (int hour = 0; hour < hours; ++hour) {
        constexpr int minute = 20;
        const QDateTime time{date, QTime{hour, minute}, zone};
        const Instant instant{std::chrono::milliseconds{time.toMSecsSinceEpoch()}};
        for (std::size_t i = 0; i < weathers.size(); ++i) {
            const QPointF corner{gap + step.width() * static_cast<double>(i), gap + step.height() * hour};
            paintView(painter, {corner, glass},
                      viewFrom(shown->point, instant, hour + minute / 60.0, weathers[i], shown->scenery));
        }
    }
    return sheet;
}

} // namespace lumaro
