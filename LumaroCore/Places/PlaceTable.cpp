// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Places/PlaceTable.h"

#include "LumaroCore/Places/NameKey.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <ranges>

namespace lumaro {
namespace {

using PlaceFormat::Record;

constexpr double farthestTown = 60'000;
constexpr double farthestSection = 3'000;
constexpr double metresPerDegree = 12'742'000 * std::numbers::pi / 360;

// The radius of a town, squared, in square metres: that of a disc with 2,500 people on each square kilometre, from
// 1.2 km to 25 km.
double squaredReach(std::uint32_t people) {
    constexpr double peoplePerSquareMetre = 0.0025;
    constexpr double least = 1'200.0 * 1'200.0;
    constexpr double most = 25'000.0 * 25'000.0;
    return std::clamp(people / peoplePerSquareMetre / std::numbers::pi, least, most);
}

// Bounds a distance from below without a trigonometric function, so that few places need the whole formula.
class Yardstick {
public:
    Yardstick(Coordinates point, double farthestMetres) : point_{point} {
        const double farthestLatitude = std::abs(point.latitude) + farthestMetres / metresPerDegree;
        // Near the poles the meridians are too crooked for it.
        constexpr double last = 80;
        if (farthestLatitude < last) eastward_ = std::cos(farthestLatitude * std::numbers::pi / 180);
    }

    double squaredAtLeast(Coordinates other) const {
        // Over 60 km the plane is too long by less than this.
        constexpr double ofPlane = 0.99 * metresPerDegree;
        const double north = (other.latitude - point_.latitude) * ofPlane;
        const double east = std::remainder(other.longitude - point_.longitude, 360) * eastward_ * ofPlane;
        return north * north + east * east;
    }

private:
    Coordinates point_;
    double eastward_ = 0;
};

// Columns of the grid from one to another, which may lie beyond the date line, as ranges that do not cross it.
struct ColumnRange {
    int first = 0;
    int last = 0;
};

std::vector<ColumnRange> columnsWithin(Coordinates point, double metres) {
    const double north = metres / metresPerDegree;
    const double farthest = std::abs(point.latitude) + north;
    constexpr int lastColumn = PlaceFormat::columns - 1;
    if (farthest >= 90) return {{0, lastColumn}};
    // The meridian that touches a circle on the sphere.
    const double radian = std::numbers::pi / 180;
    const double east = std::asin(std::sin(north * radian) / std::cos(point.latitude * radian)) / radian;
    const int first = static_cast<int>(std::floor(point.longitude - east)) + 180;
    const int last = static_cast<int>(std::floor(point.longitude + east)) + 180;
    if (last - first >= lastColumn) return {{0, lastColumn}};
    if (first < 0) return {{first + PlaceFormat::columns, lastColumn}, {0, last}};
    if (last > lastColumn) return {{first, lastColumn}, {0, last - PlaceFormat::columns}};
    return {{first, last}};
}

// splitmix64: neighbouring numbers give seeds that have nothing in common.
std::uint64_t mixed(std::uint64_t value) {
    value += 0x9e3779b97f4a7c15ULL;
    value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9ULL;
    value = (value ^ (value >> 27)) * 0x94d049bb133111ebULL;
    return value ^ (value >> 31);
}

std::uint64_t seedOf(std::int32_t latitude, std::int32_t longitude) {
    return mixed((std::uint64_t{static_cast<std::uint32_t>(latitude)} << 32) | static_cast<std::uint32_t>(longitude));
}

// The heaviest records so far, the heaviest first, each once.
class Ranking {
public:
    explicit Ranking(std::size_t most) : most_{most} {}

    struct Entry {
        std::uint64_t weight = 0;
        std::uint32_t record = 0;
    };

    void add(const Entry& entry) {
        if (entries_.size() == most_ && entry.weight <= entries_.back().weight) return;
        const auto same = std::ranges::find(entries_, entry.record, &Entry::record);
        if (same != entries_.end()) {
            if (entry.weight <= same->weight) return;
            entries_.erase(same);
        } else if (entries_.size() == most_) {
            entries_.pop_back();
        }
        entries_.insert(std::ranges::upper_bound(entries_, entry.weight, std::greater{}, &Entry::weight), entry);
    }
    const std::vector<Entry>& entries() const { return entries_; }

private:
    std::size_t most_;
    std::vector<Entry> entries_;
};

} // namespace

std::expected<PlaceTable, std::string> PlaceTable::open(std::span<const std::byte> bytes) {
    auto parts = PlaceFormat::read(bytes);
    if (!parts) return std::unexpected{std::move(parts).error()};
    return PlaceTable{*parts};
}

std::optional<Record> PlaceTable::nearest(Coordinates point, Kind kind, double farthestMetres) const {
    if (!isOnEarth(point)) return std::nullopt;
    const double north = farthestMetres / metresPerDegree;
    const auto rowOf = [](double latitude) {
        return std::clamp(static_cast<int>(std::floor(latitude)) + 90, 0, PlaceFormat::rows - 1);
    };
    const auto columns = columnsWithin(point, farthestMetres);
    const Yardstick yardstick{point, farthestMetres};

    std::optional<Record> best;
    double leastDepth = HUGE_VAL; // squares of distance by reach
    const auto look = [&](const Record& record) {
        if (record.isSection() != (kind == Kind::section)) return;
        const double reach = squaredReach(record.people);
        const double farthest = std::min(farthestMetres * farthestMetres, leastDepth * reach);
        if (yardstick.squaredAtLeast(record.position()) > farthest) return;
        const double metres = metresBetween(point, record.position());
        if (metres > farthestMetres || metres * metres / reach >= leastDepth) return;
        leastDepth = metres * metres / reach;
        best = record;
    };
    for (int row = rowOf(point.latitude - north); row <= rowOf(point.latitude + north); ++row) {
        for (const auto& [first, last] : columns) {
            const auto cell = static_cast<std::uint32_t>(row * PlaceFormat::columns);
            const auto end = parts_.cells[cell + static_cast<std::uint32_t>(last) + 1];
            for (auto at = parts_.cells[cell + static_cast<std::uint32_t>(first)]; at < end; ++at)
                look(parts_.records[at]);
        }
    }
    return best;
}

PlaceFacts PlaceTable::factsAt(Coordinates point) const {
    PlaceFacts facts;
    const auto town = nearest(point, Kind::town, farthestTown);
    if (!town) return facts;
    facts.locality = parts_.text(town->name);
    facts.timeZone = zoneOf(*town);
    // Of a neighbour's sections none is named.
    const auto section = nearest(point, Kind::section, farthestSection);
    if (section && nearest(section->position(), Kind::town, farthestTown) == town)
        facts.subLocality = parts_.text(section->name);
    return facts;
}

Scenery PlaceTable::sceneryAt(Coordinates point) const {
    if (const auto town = nearest(point, Kind::town, farthestTown)) {
        return {.seed = seedOf(town->latitude, town->longitude),
                .people = town->people,
                .isByTheSea = town->isByTheSea(),
                .hills = town->hills()};
    }
    if (!isOnEarth(point)) return {};
    const auto tenths = [](double degrees) { return static_cast<std::int32_t>(std::lround(degrees * 10)); };
    const auto [latitude, longitude] = rounded(point, 1);
    // Across the date line it is one meridian.
    return {.seed = seedOf(tenths(latitude), tenths(longitude == -180 ? 180 : longitude))};
}

std::vector<Place> PlaceTable::find(std::string_view typed, std::size_t most) const {
    most = std::min(most, mostFound);
    const auto key = typed.size() > longestTyped ? std::string{} : nameKey(typed);
    if (key.empty() || most == 0) return {};
    const auto keyAt = [&](std::uint32_t place) { return nameKey(parts_.textOf(parts_.names[place])); };
    const auto places = std::views::iota(std::uint32_t{0}, parts_.names.size());
    // Names come in the order of their keys: first all that are what was typed, then what only begins with it.
    const auto start = *std::ranges::partition_point(places, [&](auto place) { return keyAt(place) < key; });
    const auto rest = std::views::iota(start, parts_.names.size());
    const auto inFull = *std::ranges::partition_point(rest, [&](auto place) { return keyAt(place) == key; });
    const auto end = *std::ranges::partition_point(rest, [&](auto place) { return keyAt(place).starts_with(key); });

    Ranking ranking{most};
    for (auto place = start; place < end; ++place) {
        const auto name = parts_.names[place];
        const auto record = parts_.recordOf(name);
        const bool isLaterWord = parts_.isLaterWord(name);
        const std::uint64_t ofName = parts_.isAlias(name) && !isLaterWord ? 1 : 20;
        const std::uint64_t ofLength = place < inFull && !isLaterWord ? 100 : 1;
        ranking.add(
            {.weight = (std::uint64_t{parts_.records[record].people} + 1) * ofName * ofLength, .record = record});
    }
    std::vector<Place> found;
    for (const auto& entry : ranking.entries()) found.push_back(placeOf(parts_.records[entry.record]));
    return found;
}

std::string_view PlaceTable::zoneOf(const Record& record) const {
    return parts_.text(parts_.zones[record.zone]);
}

Place PlaceTable::placeOf(const Record& record) const {
    return {.name = parts_.text(record.name),
            .country = parts_.text(parts_.countries[record.country]),
            .zone = zoneOf(record),
            .position = record.position(),
            .people = record.people};
}

} // namespace lumaro
