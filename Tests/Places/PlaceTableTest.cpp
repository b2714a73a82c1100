// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Places/PlaceTable.h"

#include "Data/Places/PlacesData.h"
#include "LumaroCore/Places/NameKey.h"
#include "LumaroCore/Places/TableGeocoder.h"
#include "Tests/Places/Landmarks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iostream>
#include <numbers>
#include <random>

namespace lumaro {
namespace {

const double noNumber = std::nan("");

const PlaceTable& theTable() {
    static const auto table = PlaceTable::open(placesData()).value();
    return table;
}

const PlaceFormat::Parts& theParts() {
    static const auto parts = PlaceFormat::read(placesData()).value();
    return parts;
}

std::string townAt(Coordinates point) {
    return theTable().factsAt(point).locality.value_or("");
}

// "Paris FR", in the order found.
std::vector<std::string> found(std::string_view typed, std::size_t most = 8) {
    std::vector<std::string> names;
    for (const auto& place : theTable().find(typed, most))
        names.push_back(std::string{place.name} + " " + std::string{place.country});
    return names;
}

std::string first(std::string_view typed) {
    const auto names = found(typed, 1);
    return names.empty() ? "" : names.front();
}

TEST(PlaceTable, NamesTheTownsOfSights) {
    int right = 0;
    for (const auto& [sight, position, town] : landmarks) {
        const auto said = townAt(position);
        right += said == town ? 1 : 0;
        if (said != town) std::cout << sight << " is in " << town << ", not in " << said << '\n';
    }
    EXPECT_GE(right, 37);
}

// Every record against the rule, without the grid and without the short cuts.
TEST(PlaceTable, NamesTheTownWhoseReachAPointIsDeepestIn) {
    const auto& parts = theParts();
    const auto slowly = [&](Coordinates point) {
        std::string name;
        double least = HUGE_VAL;
        for (std::uint32_t place = 0; place < parts.records.size(); ++place) {
            const auto record = parts.records[place];
            if (record.isSection() || std::abs(record.position().latitude - point.latitude) > 0.6) continue;
            const double metres = metresBetween(point, record.position());
            const double reach =
                std::clamp(1000 * std::sqrt(record.people / 2500.0 / std::numbers::pi), 1200.0, 25000.0);
            if (metres > 60'000 || metres / reach >= least) continue;
            least = metres / reach;
            name = parts.text(record.name);
        }
        return name;
    };
    std::mt19937_64 random{7};
    std::uniform_real_distribution<double> away{-0.8, 0.8};
    std::vector<Coordinates> points{{78.2, 15.6}, {-16.8, 179.99}, {-16.8, -179.99}, {-77.8, 166.7}, {71.2, 180}};
    while (points.size() < 60) {
        const auto near = parts.records[static_cast<std::uint32_t>(random() % parts.records.size())].position();
        points.push_back({near.latitude + away(random), near.longitude + away(random)});
    }
    int named = 0;
    for (const auto point : points) {
        const auto name = townAt(point);
        EXPECT_EQ(name, slowly(point)) << point.latitude << ' ' << point.longitude;
        named += name.empty() ? 0 : 1;
    }
    EXPECT_GT(named, 40);
}

TEST(PlaceTable, NamesThePartOfTheTownAndTheZone) {
    const auto bondi = theTable().factsAt({-33.891, 151.274});
    EXPECT_EQ(bondi.locality, "Sydney");
    EXPECT_EQ(bondi.subLocality, "Bondi Beach");
    EXPECT_EQ(bondi.timeZone, "Australia/Sydney");
    EXPECT_EQ(bondi.name, std::nullopt);

    PlaceFacts heard;
    TableGeocoder geocoder{theTable()};
    EXPECT_NE(geocoder.name({-33.891, 151.274}, [&](PlaceFacts facts) { heard = std::move(facts); }), nullptr);
    EXPECT_EQ(heard, bondi);
}

TEST(PlaceTable, NamesNothingFarFromTownsAndOffTheEarth) {
    for (const Coordinates nowhere : {Coordinates{0, 0},
                                      {90, 0},
                                      {-90, 180},
                                      {89.99, -180},
                                      {45, -40},
                                      {23, 12},
                                      {91, 0},
                                      {0, 181},
                                      {noNumber, 0},
                                      {0, noNumber},
                                      {HUGE_VAL, -HUGE_VAL}})
        EXPECT_EQ(theTable().factsAt(nowhere), PlaceFacts{}) << nowhere.latitude << ' ' << nowhere.longitude;
    EXPECT_EQ(townAt({78.2232, 15.6267}), "Longyearbyen");
}

TEST(PlaceTable, NamesTownsOnBothSidesOfTheDateLine) {
    EXPECT_EQ(townAt({-18.1416, 178.4419}), "Suva");
    const auto& parts = theParts();
    int crossed = 0;
    for (std::uint32_t place = 0; place < parts.records.size(); ++place) {
        const auto [latitude, longitude] = parts.records[place].position();
        const Coordinates across{latitude, longitude > 0 ? -179.99 : 179.99};
        if (std::abs(longitude) < 179 || metresBetween({latitude, longitude}, across) > 59'000) continue;
        EXPECT_NE(townAt(across), "") << latitude << ' ' << longitude;
        ++crossed;
    }
    EXPECT_GT(crossed, 0);
    EXPECT_EQ(theTable().factsAt({-16.8, 180}), theTable().factsAt({-16.8, -180}));
}

TEST(PlaceTable, KnowsSeaAndHills) {
    struct Case {
        std::string_view town;
        bool isByTheSea;
        std::vector<int> hills;
    };
    for (const auto& [town, isByTheSea, hills] : {Case{"lisbon", true, {1, 2}},
                                                  {"hoboken", true, {0, 1}},
                                                  {"new york city", true, {0, 1}},
                                                  {"naples", true, {1, 2, 3}},
                                                  {"stockholm", true, {0, 1}},
                                                  {"baku", true, {0, 1}},
                                                  {"madrid", false, {1, 2}},
                                                  {"paris", false, {0, 1}},
                                                  {"london", false, {0, 1}},
                                                  {"philadelphia", false, {0, 1}},
                                                  {"berlin", false, {0}},
                                                  {"amsterdam", false, {0}},
                                                  {"innsbruck", false, {3}},
                                                  {"la paz", false, {3}}}) {
        const auto place = theTable().find(town, 1).at(0);
        const auto scenery = theTable().sceneryAt(place.position);
        EXPECT_EQ(scenery.isByTheSea, isByTheSea) << town;
        EXPECT_NE(std::ranges::find(hills, scenery.hills), hills.end()) << town << ' ' << scenery.hills;
        EXPECT_EQ(scenery.people, place.people);
    }
}

TEST(PlaceTable, GivesATownOneSceneryAndAnEmptySpotItsOwn) {
    const auto scenery = [](double latitude, double longitude) { return theTable().sceneryAt({latitude, longitude}); };
    EXPECT_EQ(scenery(48.86, 2.35), scenery(48.84, 2.31));
    EXPECT_NE(scenery(48.86, 2.35).seed, scenery(45.76, 4.84).seed);
    EXPECT_EQ(scenery(48.86, 2.35).seed, 0x3ac39ed76d0bb5f8ULL); // of its position, on every computer
    EXPECT_EQ(scenery(45.01, -40.04), scenery(44.98, -39.96));
    EXPECT_NE(scenery(45.0, -40.0).seed, scenery(45.1, -40.0).seed);
    EXPECT_EQ(scenery(45, -40), (Scenery{.seed = scenery(45, -40).seed}));
    EXPECT_EQ(scenery(-0.01, 180), scenery(0.01, -180));
    EXPECT_EQ(scenery(noNumber, 0), Scenery{});
}

TEST(PlaceTable, FindsTownsByWhatIsTypedOfThem) {
    for (const auto& [typed, town] : std::initializer_list<std::pair<std::string_view, std::string_view>>{
             {"lis", "Lisbon PT"},        {"  LISBON\t", "Lisbon PT"}, {"izmir", "İzmir TR"},
             {"IZMIR", "İzmir TR"},       {"İZMİR", "İzmir TR"},       {"sao pau", "São Paulo BR"},
             {"Łódź", "Łódź PL"},         {"lodz", "Łódź PL"},         {"tromso", "Tromsø NO"},
             {"munich", "Munich DE"},     {"München", "Munich DE"},    {"cologne", "Köln DE"},
             {"lissabon", "Lisbon PT"},   {"moskau", "Moscow RU"},     {"moscow", "Moscow RU"},
             {"mailand", "Milan IT"},     {"roma", "Rome IT"},         {"venezia", "Venice IT"},
             {"firenze", "Florence IT"},  {"york", "York GB"},         {"aix en provence", "Aix-en-Provence FR"},
             {"l’aquila", "L'Aquila IT"}, {"laquila", "L'Aquila IT"},  {"innsbruc", "Innsbruck AT"}})
        EXPECT_EQ(first(typed), town) << typed;
    EXPECT_EQ(found("york", 2), (std::vector<std::string>{"York GB", "New York City US"}));
    EXPECT_EQ(found("ham", 1), std::vector<std::string>{"Hamburg DE"});
    const auto little = found("au");
    EXPECT_NE(std::ranges::find(little, "Au CH"), little.end());
    for (const std::string_view nothing : {"", " \t", "qqqq", "-", "\xff", "москва"})
        EXPECT_TRUE(found(nothing).empty()) << nothing;
    EXPECT_TRUE(found(std::string(PlaceTable::longestTyped + 1, 'a')).empty());
    EXPECT_TRUE(found("paris", 0).empty());
}

TEST(PlaceTable, FindsEachTownOnceAndLargerOnesFirst) {
    for (const std::string_view typed : {"s", "san", "new york", "ma"}) {
        const auto places = theTable().find(typed, 1'000);
        EXPECT_LE(places.size(), PlaceTable::mostFound);
        EXPECT_GT(places.size(), 1U);
        std::uint32_t peopleBefore = UINT32_MAX;
        for (auto place = places.begin(); place != places.end(); ++place) {
            EXPECT_EQ(std::find(std::next(place), places.end(), *place), places.end()) << place->name;
            const auto key = nameKey(place->name);
            if (!key.starts_with(typed) || key == typed) continue;
            EXPECT_LE(place->people, peopleBefore) << place->name;
            peopleBefore = place->people;
        }
    }
}

TEST(PlaceTable, MakesOneKeyOfWhatIsTypedInManyWays) {
    for (const auto& [name, key] : std::initializer_list<std::pair<std::string_view, std::string_view>>{
             {"İZMİR", "izmir"},
             {"Łódź", "lodz"},
             {" Aix-en - Provence ", "aix en provence"},
             {"St. John’s (Newfoundland)", "st johns newfoundland"},
             {"Straße/Ærø", "strasse aero"},
             {"\xff", ""}})
        EXPECT_EQ(nameKey(name), key);
}

// The packer sorts by its own rule; here it is held against the one that is looked by.
TEST(PlaceTable, HasEveryNameInTheOrderOfItsKey) {
    const auto& parts = theParts();
    std::vector<int> seen(parts.names.size());
    std::string before;
    std::uint32_t peopleBefore = 0;
    for (std::uint32_t place = 0; place < parts.names.size(); ++place) {
        const auto name = parts.names[place];
        const auto text = parts.textOf(name);
        auto key = nameKey(text);
        const auto people = parts.records[parts.recordOf(name)].people;
        EXPECT_TRUE(before < key || (before == key && peopleBefore >= people)) << before << " | " << key;
        EXPECT_FALSE(key.empty()) << text;
        before = std::move(key);
        peopleBefore = people;
        ++seen[name];
    }
    EXPECT_TRUE(std::ranges::all_of(seen, [](int times) { return times == 1; }));
}

TEST(PlaceTable, RefusesACutOrForeignFile) {
    const auto whole = placesData();
    std::mt19937_64 random{11};
    for (int cut = 0; cut < 200; ++cut) {
        const auto size = cut < 100 ? static_cast<std::size_t>(cut) : random() % whole.size();
        const std::vector<std::byte> copy{whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)};
        EXPECT_FALSE(PlaceTable::open(copy)) << size;
    }
    std::vector<std::byte> longer{whole.begin(), whole.end()};
    longer.push_back(std::byte{0});
    EXPECT_EQ(PlaceTable::open(longer).error(), "a table of places that is cut, or has something behind it");
    EXPECT_EQ(PlaceTable::open(std::vector(1000, std::byte{'x'})).error(), "this is no table of places");
    longer.insert(longer.begin(), std::byte{0}); // at an odd address
    EXPECT_TRUE(PlaceTable::open(std::span{longer}.subspan(1, whole.size())));
}

// A flipped bit is found, or gives another answer: nothing is read beside the table, which the address sanitizer sees.
TEST(PlaceTable, ReadsNothingBesideADamagedTable) {
    std::vector<std::byte> bytes{placesData().begin(), placesData().end()};
    const auto& parts = theParts();
    std::mt19937_64 random{13};
    int refused = 0;
    for (int flip = 0; flip < 240; ++flip) {
        // A third each: the first bytes, the numbers, everything.
        const auto numbers = bytes.size() - parts.texts.size();
        const std::array<std::size_t, 3> sizes{sizeof(PlaceFormat::Header), numbers, bytes.size()};
        auto& byte = bytes[random() % sizes[static_cast<std::size_t>(flip) % sizes.size()]];
        const auto bit = std::byte{1} << (random() % 8);
        byte ^= bit;
        const auto table = PlaceTable::open(bytes);
        refused += table ? 0 : 1;
        for (int ask = 0; table && ask < 20; ++ask) {
            const auto at = parts.records[static_cast<std::uint32_t>(random() % parts.records.size())].position();
            (void)table->factsAt(at);
            (void)table->sceneryAt(at);
            (void)table->find(std::string{static_cast<char>('a' + random() % 26)}, 5);
        }
        byte ^= bit;
    }
    EXPECT_GT(refused, 100);
    EXPECT_LT(refused, 240);
}

} // namespace
} // namespace lumaro
