// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Location/ChosenPlace.h"
#include "LumaroCore/Location/PositionSource.h"
#include "LumaroCore/Presence/Here.h"
#include "LumaroCore/Support/Fields.h"

#include <optional>
#include <string>
#include <string_view>
#include <tuple>

namespace lumaro {

/// Where two people are, as one of them knows it.
struct Whereabouts {
    bool shares = false; ///< whether the partner sees the place here
    LocationAccess access = LocationAccess::notDetermined;
    HerePrecision precision = HerePrecision::neighbourhood;
    std::optional<ChosenPlace> chosen; ///< the person says that they are there
    std::optional<Here> own;           ///< as it is shared
    std::optional<Here> partner;
    std::optional<std::string> zone;        ///< of this computer, where it is shared without a place
    std::optional<std::string> partnerZone; ///< theirs, as they said last

    static constexpr auto fields() {
        return std::tuple{Field{"shares", &Whereabouts::shares},
                          Field{"access", &Whereabouts::access},
                          Field{"precision", &Whereabouts::precision},
                          Field{"chosen", &Whereabouts::chosen},
                          Field{"own", &Whereabouts::own},
                          Field{"partner", &Whereabouts::partner},
                          Field{"zone", &Whereabouts::zone},
                          Field{"partnerZone", &Whereabouts::partnerZone}};
    }
};

/// One object on a line; what is not known is left out.
std::string whereaboutsJson(const Whereabouts& whereabouts);
/// A line for each of them: `you: lisboa, 38.72,-9.14 (neighbourhood), 21 °C, cloud, since 2026-05-01 14:05`.
std::string whereaboutsText(const Whereabouts& whereabouts, std::string_view partner);

} // namespace lumaro
