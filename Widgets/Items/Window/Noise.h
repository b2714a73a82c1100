// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>

namespace lumaro {

/// What the hills of the noise are made of.
constexpr int noiseSide = 64;
extern const std::array<float, noiseSide * noiseSide> noiseGrid;

/// Smooth numbers over a plane, 0 to 1, with about one hill to each unit; the same everywhere for the same place.
inline float noiseAt(float x, float y) {
    constexpr unsigned mask = noiseSide - 1;
    // Rounded down by hand: it is done a million times for a window.
    const int left = static_cast<int>(x) - (x < 0 ? 1 : 0);
    const int top = static_cast<int>(y) - (y < 0 ? 1 : 0);
    float tx = x - static_cast<float>(left);
    float ty = y - static_cast<float>(top);
    tx = tx * tx * (3 - 2 * tx);
    ty = ty * ty * (3 - 2 * ty);
    const unsigned column = static_cast<unsigned>(left) & mask;
    const unsigned next = (column + 1) & mask;
    const auto* const upper = &noiseGrid[(static_cast<unsigned>(top) & mask) * noiseSide];
    const auto* const lower = &noiseGrid[((static_cast<unsigned>(top) + 1) & mask) * noiseSide];
    const float above = upper[column] + (upper[next] - upper[column]) * tx;
    const float below = lower[column] + (lower[next] - lower[column]) * tx;
    return above + (below - above) * ty;
}

/// Several of them, each twice as fine and half as strong as the one before.
template <int octaves>
float cloudiness(float x, float y) {
    float sum = 0;
    float weight = 0.5F;
    float all = 0;
    for (int i = 0; i < octaves; ++i) {
        sum += weight * noiseAt(x, y);
        all += weight;
        weight *= 0.5F;
        // Turned a little, so that the grids do not lie on each other.
        const float turned = 1.62F * x - 1.18F * y + 17.3F;
        y = 1.18F * x + 1.62F * y + 5.1F;
        x = turned;
    }
    return sum / all;
}

} // namespace lumaro
