// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/JsonNumber.h"

#include "LumaroCore/BoardModel/Payload.h"
#include "LumaroCore/Support/Wire.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <random>

namespace lumaro {
namespace {

// The same bits come back, and no text is longer than it has to be.
void expectFaithful(double value) {
    std::array<char, maxDoubleText> room{};
    const std::string text{room.data(), writeDouble(room.data(), value)};
    const auto read = Wire::decode<std::vector<InkStroke>>(R"([{"c":"","p":[],"s":)" + text + "}]");
    EXPECT_EQ(std::bit_cast<std::uint64_t>(read->at(0).width), std::bit_cast<std::uint64_t>(value)) << text;
    if (std::abs(value) < 1e15 && std::trunc(value) == value) {
        const char* sign = std::signbit(value) ? "-" : "";
        EXPECT_EQ(text, sign + std::to_string(static_cast<std::int64_t>(std::abs(value))));
    } else {
        EXPECT_LE(std::ssize(text), std::to_chars(room.begin(), room.end(), value).ptr - room.data()) << text;
    }
}

TEST(JsonNumber, TakesAWholeNumberHoweverItIsWritten) {
    const std::vector<std::pair<std::int64_t, std::vector<const char*>>> cases = {
        {0, {"0", "-0.0e7", "0e99999999999999999999"}},
        {7, {"7", "7.0", "70e-1", "0.7E1", "0.0007e+04"}},
        {INT64_MAX, {"9223372036854775807", "92233720368547758.07e2"}},
        {INT64_MIN, {"-9223372036854775808", "-9223372036854775808.0"}}};
    for (const auto& [value, texts] : cases) {
        for (const char* text : texts) {
            EXPECT_EQ(parseNumber(text).form, NumberForm::whole) << text;
            EXPECT_EQ(parseNumber(text).value, value) << text;
        }
    }
}

TEST(JsonNumber, TellsOtherNumbersFromWholeOnes) {
    for (const char* text : {"7.5", "-0.1", "1e-1", "1e-99999999999999999999", "9223372036854775807.5"})
        EXPECT_EQ(parseNumber(text).form, NumberForm::fractional) << text;
    for (const char* text : {"9223372036854775808", "-9223372036854775809", "1e19", "0.1e21", "1e99999999999999999999"})
        EXPECT_EQ(parseNumber(text).form, NumberForm::large) << text;
    for (const char* text : {"", "-", "+1", "01", "-00", ".5", "5.", "5.e1", "1e", "1e+", "0x10", "1 ", "1e5.0", "--1"})
        EXPECT_EQ(parseNumber(text).form, NumberForm::malformed) << text;
}

TEST(JsonNumber, KeepsTheBitsOfDoubles) {
    for (const double value : {0.0, 5e-324, 2.2250738585072014e-308, 1.7976931348623157e308, 0x1p53, 0x1p63, 1e5, 1e12,
                               1e14, 1e15, 1e12 - 0.001, 999999999999999.9, 1e-7}) {
        expectFaithful(value);
        expectFaithful(-value);
    }
    std::mt19937_64 random{7};
    for (int i = 0; i < 20000; ++i) {
        const auto bits = random();
        if (std::isfinite(std::bit_cast<double>(bits))) expectFaithful(std::bit_cast<double>(bits));
        expectFaithful(std::bit_cast<double>(bits & 0x800fffffffffffffULL)); // a subnormal
        const auto count = static_cast<double>(static_cast<std::int64_t>(bits) >> (bits % 50));
        for (const double divisor : {1.0, 10.0, 1000.0}) expectFaithful(count / divisor);
    }
}

} // namespace
} // namespace lumaro
