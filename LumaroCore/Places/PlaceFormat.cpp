// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Places/PlaceFormat.h"

#include <simdjson.h>

#include <bit>

namespace lumaro::PlaceFormat {
namespace {

static_assert(std::endian::native == std::endian::little, "the table's numbers are read as they lie");

constexpr std::array<char, 8> magicOfPlaces{'L', 'M', 'P', 'L', 'A', 'C', 'E', 'S'};
constexpr std::uint32_t versionOfPlaces = 1;

// Cuts the bytes into columns, one behind the other.
class Cutter {
public:
    explicit Cutter(const std::byte* start) : place_{start} {}

    template <class T>
    Column<T> take(std::uint32_t size) {
        const auto* const start = place_;
        place_ += std::size_t{size} * sizeof(T);
        return {start, size};
    }
    std::string_view takeText(std::uint32_t size) { return {reinterpret_cast<const char*>(place_), size}; }

private:
    const std::byte* place_;
};

std::string faultOf(const Header& header, std::size_t size) {
    if (header.magic != magicOfPlaces) return "this is no table of places";
    if (header.version != versionOfPlaces) return "a table of places of another version";
    if (header.records > mostRecords || header.aliases > mostAliases || header.textBytes > mostTextBytes ||
        header.zones > UINT16_MAX || header.countries > UINT8_MAX) {
        return "a table of places with more than there may be";
    }
    const std::size_t numbers = std::size_t{cells} + 1 + header.zones + header.countries + header.records +
                                header.aliases; // the last two: of names
    const auto expected = sizeof(Header) + numbers * sizeof(std::uint32_t) + header.records * sizeof(Record) +
                          header.aliases * sizeof(Alias) + header.textBytes;
    return size == expected ? "" : "a table of places that is cut, or has something behind it";
}

bool isWhole(const Column<std::uint32_t>& starts, std::uint32_t records) {
    std::uint32_t before = 0;
    for (std::uint32_t cell = 0; cell < starts.size(); ++cell) {
        const auto start = starts[cell];
        if (start < before) return false;
        before = start;
    }
    return starts[0] == 0 && before == records;
}

bool areBelow(const Column<std::uint32_t>& numbers, std::size_t limit) {
    for (std::uint32_t place = 0; place < numbers.size(); ++place) {
        if (numbers[place] >= limit) return false;
    }
    return true;
}

bool isWhole(const Record& record, const Parts& parts) {
    return isOnEarth(record.position()) && record.name < parts.texts.size() && record.zone < parts.zones.size() &&
           record.country < parts.countries.size();
}

std::string faultOf(const Parts& parts) {
    const auto& texts = parts.texts;
    if (texts.empty() || texts.back() != '\0' || !simdjson::validate_utf8(texts.data(), texts.size()))
        return "damaged texts in the table of places";
    if (!isWhole(parts.cells, parts.records.size())) return "a damaged grid in the table of places";
    for (std::uint32_t place = 0; place < parts.records.size(); ++place) {
        if (!isWhole(parts.records[place], parts)) return "a damaged record in the table of places";
    }
    for (std::uint32_t place = 0; place < parts.aliases.size(); ++place) {
        const auto alias = parts.aliases[place];
        if (alias.text >= texts.size() || alias.record >= parts.records.size())
            return "a damaged alias in the table of places";
    }
    if (!areBelow(parts.zones, texts.size()) || !areBelow(parts.countries, texts.size()) ||
        !areBelow(parts.names, std::size_t{parts.records.size()} + parts.aliases.size())) {
        return "a damaged index in the table of places";
    }
    return "";
}

} // namespace

std::expected<Parts, std::string> read(std::span<const std::byte> bytes) {
    Header header;
    if (bytes.size() < sizeof(header)) return std::unexpected{"this is no table of places"};
    std::memcpy(&header, bytes.data(), sizeof(header));
    if (auto fault = faultOf(header, bytes.size()); !fault.empty()) return std::unexpected{std::move(fault)};

    Cutter cutter{bytes.data() + sizeof(header)};
    Parts parts;
    parts.cells = cutter.take<std::uint32_t>(cells + 1);
    parts.records = cutter.take<Record>(header.records);
    parts.zones = cutter.take<std::uint32_t>(header.zones);
    parts.countries = cutter.take<std::uint32_t>(header.countries);
    parts.aliases = cutter.take<Alias>(header.aliases);
    parts.names = cutter.take<std::uint32_t>(header.records + header.aliases);
    parts.texts = cutter.takeText(header.textBytes);
    if (auto fault = faultOf(parts); !fault.empty()) return std::unexpected{std::move(fault)};
    return parts;
}

} // namespace lumaro::PlaceFormat
