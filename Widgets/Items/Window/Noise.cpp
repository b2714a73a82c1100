// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Window/Noise.h"

#include "Widgets/Items/Window/Chance.h"

#include <array>
#include <cmath>

namespace lumaro {
namespace {

constexpr int gridSide = 64;
constexpr unsigned gridMask = gridSide - 1;

constexpr auto grid = [] {
    std::array<float, gridSide * gridSide> made{};
    Chance chance{0x6C75'6D61'726F};
    for (auto& value : made) value = static_cast<float>(chance.part());
    return made;
}();

} // namespace

float noiseAt(float x, float y) {
    const float left = std::floor(x);
    const float top = std::floor(y);
    float tx = x - left;
    float ty = y - top;
    tx = tx * tx * (3 - 2 * tx);
    ty = ty * ty * (3 - 2 * ty);
    const auto column = static_cast<unsigned>(static_cast<int>(left));
    const auto row = static_cast<unsigned>(static_cast<int>(top));
    const auto* const upper = &grid[(row & gridMask) * gridSide];
    const auto* const lower = &grid[((row + 1) & gridMask) * gridSide];
    const float a = upper[column & gridMask];
    const float b = upper[(column + 1) & gridMask];
    const float c = lower[column & gridMask];
    const float d = lower[(column + 1) & gridMask];
    return (a + (b - a) * tx) * (1 - ty) + (c + (d - c) * tx) * ty;
}

} // namespace lumaro
