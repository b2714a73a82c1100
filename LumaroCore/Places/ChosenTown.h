// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Location/ChosenPlace.h"
#include "LumaroCore/Places/PlaceTable.h"

namespace lumaro {

/// A town of the table as the one that a person says they are in.
inline ChosenPlace chosenPlace(const Place& town) {
    return {std::string{town.name}, std::string{town.country}, std::string{town.zone}, town.position.latitude,
            town.position.longitude};
}

} // namespace lumaro
