// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace lumaro {

enum class NumberForm : std::uint8_t {
    whole,      ///< a whole number that 64 bits hold; `value` is set
    fractional, ///< a number with a fraction
    large,      ///< a whole number beyond 64 bits
    malformed,  ///< not a JSON number
};

struct ParsedNumber {
    NumberForm form = NumberForm::malformed;
    std::int64_t value = 0;
};

/// Reads a JSON number exactly, however it is written: 7, 7.0, 70e-1 and 0.7E1 are all the whole number 7.
ParsedNumber parseNumber(std::string_view token);

/// Room for the longest text of a double.
inline constexpr std::size_t maxDoubleText = 32;

/// Writes a finite double in the shortest form that reads back to the same bits; returns the end of the text.
/// Whole numbers under 10^15 have neither point nor exponent; negative zero is "-0".
char* writeDouble(char* out, double value);
/// The same as a text of its own.
std::string textOfDouble(double value);

} // namespace lumaro
