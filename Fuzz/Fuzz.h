// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Fatal.h"
#include "LumaroCore/Support/Wire.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <source_location>
#include <string_view>

namespace lumaro::fuzz {

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

inline void require(bool holds, std::string_view what, std::source_location where = std::source_location::current()) {
    if (!holds) fatal(what, where);
}

/// Reads a value. One that can be read can be written, reads back equal, and is written the same again.
template <class T>
std::optional<T> roundTrip(std::string_view text) {
    auto value = Wire::decode<T>(text);
    if (!value) {
        require(value.error().path.starts_with('$'), "an error has no path");
        return std::nullopt;
    }
    const auto written = Wire::encode(*value);
    require(written.has_value(), "a value that was read cannot be written");
    const auto again = Wire::decode<T>(*written);
    require(again == value, "a value reads back different");
    require(Wire::encode(*again) == written, "a value is written differently");
    return std::move(*value);
}

} // namespace lumaro::fuzz
