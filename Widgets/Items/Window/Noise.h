// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace lumaro {

/// Smooth numbers over a plane, 0 to 1, with about one hill to each unit; the same everywhere for the same place.
float noiseAt(float x, float y);

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
