// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Presence/NowPlaying.h"

#include <optional>
#include <string>
#include <string_view>
#include <tuple>

namespace lumaro {

/// What two people listen to, as one of them knows it.
struct Listening {
    bool shares = false;           ///< whether the partner sees what plays here
    std::optional<NowPlaying> own; ///< as it is shared
    std::optional<NowPlaying> partner;

    static constexpr auto fields() {
        return std::tuple{Field{"shares", &Listening::shares}, Field{"own", &Listening::own},
                          Field{"partner", &Listening::partner}};
    }
};

/// One object on a line; what is not known is left out.
std::string listeningJson(const Listening& listening);
/// A line for each of them: `you: "So What" by Miles Davis, 9:22, paused`.
std::string listeningText(const Listening& listening, std::string_view partner);

} // namespace lumaro
