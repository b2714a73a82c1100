// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Coordinates.h"

#include <array>
#include <string_view>

namespace lumaro {

/// A sight, and the town that people would say it is in. Chosen before the table was asked for any of them; none is
/// exchanged because the table has it wrong.
struct Landmark {
    std::string_view sight;
    Coordinates position;
    std::string_view town;
};

inline constexpr std::array<Landmark, 40> landmarks{{
    {"Sydney Opera House", {-33.8568, 151.2153}, "Sydney"},
    {"Coit Tower", {37.8024, -122.4058}, "San Francisco"},
    {"Sagrada Família", {41.4036, 2.1744}, "Barcelona"},
    {"Frauenkirche", {51.0519, 13.7415}, "Dresden"},
    {"Alhambra", {37.1761, -3.5881}, "Granada"},
    {"Charles Bridge", {50.0865, 14.4114}, "Prague"},
    {"Hagia Sophia", {41.0086, 28.9802}, "Istanbul"},
    {"Taj Mahal", {27.1751, 78.0421}, "Agra"},
    {"Gateway of India", {18.9220, 72.8347}, "Mumbai"},
    {"Petronas Towers", {3.1579, 101.7116}, "Kuala Lumpur"},
    {"Marina Bay Sands", {1.2834, 103.8607}, "Singapore"},
    {"Kinkaku-ji", {35.0394, 135.7292}, "Kyoto"},
    {"Kenyatta Conference Centre", {-1.2886, 36.8233}, "Nairobi"},
    {"Gyeongbokgung", {37.5796, 126.9770}, "Seoul"},
    {"The Bund", {31.2400, 121.4900}, "Shanghai"},
    {"Red Square", {55.7539, 37.6208}, "Moscow"},
    {"Hermitage", {59.9398, 30.3146}, "Saint Petersburg"},
    {"Cableway to Table Mountain", {-33.9485, 18.4030}, "Cape Town"},
    {"Cristo Redentor", {-22.9519, -43.2105}, "Rio de Janeiro"},
    {"Obelisco", {-34.6037, -58.3816}, "Buenos Aires"},
    {"Ángel de la Independencia", {19.4270, -99.1677}, "Mexico City"},
    {"Fenway Park", {42.3467, -71.0972}, "Boston"},
    {"Space Needle", {47.6205, -122.3493}, "Seattle"},
    {"Statue of Liberty", {40.6892, -74.0445}, "New York City"},
    {"Wrigley Field", {41.9484, -87.6553}, "Chicago"},
    {"CN Tower", {43.6426, -79.3871}, "Toronto"},
    {"Château Frontenac", {46.8119, -71.2050}, "Québec"},
    {"Edinburgh Castle", {55.9486, -3.1999}, "Edinburgh"},
    {"Old Trafford", {53.4631, -2.2913}, "Manchester"},
    {"Wembley Stadium", {51.5560, -0.2796}, "London"},
    {"Sacré-Cœur", {48.8867, 2.3431}, "Paris"},
    {"Neuschwanstein", {47.5576, 10.7498}, "Schwangau"},
    {"Schönbrunn", {48.1845, 16.3122}, "Vienna"},
    {"Rialto Bridge", {45.4380, 12.3358}, "Venice"},
    {"Leaning Tower", {43.7230, 10.3966}, "Pisa"},
    {"Amphitheatre of Pompeii", {40.7512, 14.4951}, "Pompei"},
    {"Tivoli", {55.6737, 12.5681}, "Copenhagen"},
    {"Harpa", {64.1504, -21.9326}, "Reykjavík"},
    {"Pyramid of Khufu", {29.9792, 31.1342}, "Giza"},
    {"Jemaa el-Fnaa", {31.6258, -7.9891}, "Marrakesh"},
}};

} // namespace lumaro
