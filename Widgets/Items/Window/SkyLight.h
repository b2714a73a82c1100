// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Items/Window/SkyView.h"
#include "Widgets/Items/Window/Tone.h"

namespace lumaro {

/// The colours of an hour: of the sky, of the clouds in it, and of the light on what stands under it.
struct SkyLight {
    Tone zenith;
    Tone middle;
    Tone horizon; ///< away from the sun
    Tone sunward; ///< at the horizon under the sun
    Tone sun;     ///< its own light, as clouds and water throw it back
    Tone cloudLit;
    Tone cloudShade;
    Tone cirrus;
    Tone ambient; ///< on walls and fields; 255 at noon
    Tone haze;    ///< what far things fade into
    double overcast = 0;
    double lamps = 0; ///< 0 by day, 1 when it is dark enough for all of them
    double stars = 0;
    double direct = 1; ///< what the clouds let through of sun and moon
};

SkyLight lightOf(const SkyView& view);

} // namespace lumaro
