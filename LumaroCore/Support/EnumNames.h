// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>

namespace lumaro {

/// An enumeration that travels as its string names: an overload `namesOf(E)` lists them in case order.
template <class E>
concept NamedEnum = std::is_enum_v<E> && requires(E e) {
    { namesOf(e)[0] } -> std::convertible_to<std::string_view>;
};

/// The raw string of a case.
template <NamedEnum E>
constexpr std::string_view nameOf(E value) {
    return namesOf(value)[static_cast<std::size_t>(std::to_underlying(value))];
}

/// The case with this raw string; none for any other string.
template <NamedEnum E>
constexpr std::optional<E> fromName(std::string_view name) {
    constexpr auto names = namesOf(E{});
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i] == name) return static_cast<E>(i);
    }
    return std::nullopt;
}

} // namespace lumaro
