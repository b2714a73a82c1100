// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Coordinates.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <expected>
#include <span>
#include <string>
#include <string_view>

/// The table of places as its bytes lie (docs/places.md).
namespace lumaro::PlaceFormat {

/// The maxima keep sizes of a foreign file far from any overflow; the table has a tenth of them.
constexpr std::uint32_t mostRecords = 2'000'000;
constexpr std::uint32_t mostAliases = 2'000'000;
constexpr std::uint32_t mostTextBytes = 64 << 20;

constexpr int rows = 180;    ///< of the grid, each one degree north of the last
constexpr int columns = 360; ///< of the grid, each one degree east of the last
constexpr std::uint32_t cells = rows * columns;
constexpr double unitsPerDegree = 10'000;

struct Header {
    std::array<char, 8> magic{};
    std::uint32_t version = 0;
    std::uint32_t records = 0;
    std::uint32_t zones = 0;
    std::uint32_t countries = 0;
    std::uint32_t aliases = 0;
    std::uint32_t textBytes = 0;
};
static_assert(sizeof(Header) == 32);

struct Record {
    std::int32_t latitude = 0; ///< in 1/unitsPerDegree
    std::int32_t longitude = 0;
    std::uint32_t name = 0; ///< where its text begins
    std::uint32_t people = 0;
    std::uint16_t zone = 0;
    std::uint8_t country = 0;
    std::uint8_t traits = 0;

    Coordinates position() const { return {latitude / unitsPerDegree, longitude / unitsPerDegree}; }
    bool isSection() const { return (traits & 1U) != 0; }
    bool isByTheSea() const { return (traits & 2U) != 0; }
    int hills() const { return (traits >> 2) & 3; }
    bool operator==(const Record&) const = default;
};
static_assert(sizeof(Record) == 20);

/// Another text that finds a record.
struct Alias {
    std::uint32_t text = 0;
    std::uint32_t record = 0;
};

/// A row of values in the bytes, at any address.
template <class T>
class Column {
public:
    Column() = default;
    Column(const std::byte* start, std::uint32_t size) : start_{start}, size_{size} {}

    T operator[](std::uint32_t place) const {
        T value;
        std::memcpy(&value, start_ + std::size_t{place} * sizeof(T), sizeof(T));
        return value;
    }
    std::uint32_t size() const { return size_; }

private:
    const std::byte* start_ = nullptr;
    std::uint32_t size_ = 0;
};

/// The parts of a table.
struct Parts {
    Column<std::uint32_t> cells; ///< the first record of each cell of the grid, row after row, and the end of the last
    Column<Record> records;
    Column<std::uint32_t> zones; ///< their texts
    Column<std::uint32_t> countries;
    Column<Alias> aliases;
    Column<std::uint32_t> names; ///< by `nameKey`: a record, or behind all records an alias
    std::string_view texts;      ///< each with a zero behind it

    std::string_view text(std::uint32_t start) const { return texts.data() + start; }
    bool isAlias(std::uint32_t name) const { return name >= records.size(); }
    Alias aliasOf(std::uint32_t name) const { return aliases[name - records.size()]; }
    std::uint32_t recordOf(std::uint32_t name) const { return isAlias(name) ? aliasOf(name).record : name; }
    /// What a name is sorted by, before `nameKey`.
    std::string_view textOf(std::uint32_t name) const {
        return text(isAlias(name) ? aliasOf(name).text : records[name].name);
    }
    /// Whether it is a name with the first words left out, and so lies within that name's text.
    bool isLaterWord(std::uint32_t name) const {
        const auto start = isAlias(name) ? aliasOf(name).text : 0;
        return start != 0 && texts[start - 1] != '\0';
    }
};

/// The parts of a table every number of which leads into it, and whose texts are UTF-8; else what is wrong.
std::expected<Parts, std::string> read(std::span<const std::byte> bytes);

} // namespace lumaro::PlaceFormat
