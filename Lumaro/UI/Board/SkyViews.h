// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Places/Scenery.h"
#include "LumaroCore/Presence/Weather.h"
#include "LumaroCore/Support/Coordinates.h"
#include "LumaroCore/Support/Instant.h"
#include "Widgets/Items/Window/SkyView.h"

#include <optional>

namespace lumaro {

// What is seen out of a window there and then, in steps that the eye takes for one: a view changes once a minute at
// most while the weather stays. Where the weather is not known, the sky is clear. Numbers of a stranger's device are
// held within what the earth knows.

/// From a point on the earth; the hour is the local one.
SkyView viewFrom(Coordinates point, Instant now, double hour, const std::optional<Weather>& weather,
                 const Scenery& scenery);
/// Where only the hour is known: the sun of an equinox, and no moon.
SkyView viewAtHour(double hour, const std::optional<Weather>& weather, const Scenery& scenery);

/// What can be seen from a place that is in no table: the same for all points within some ten kilometres.
Scenery sceneryUnknownAt(Coordinates point);

} // namespace lumaro
