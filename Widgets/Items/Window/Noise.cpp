// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Window/Noise.h"

#include "Widgets/Items/Window/Chance.h"

namespace lumaro {

constinit const std::array<float, noiseSide * noiseSide> noiseGrid = [] {
    std::array<float, noiseSide * noiseSide> made{};
    Chance chance{0x6C75'6D61'726F};
    for (auto& value : made) value = static_cast<float>(chance.part());
    return made;
}();

} // namespace lumaro
