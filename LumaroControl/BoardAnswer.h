// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroControl/ExitStatus.h"
#include "LumaroCore/BoardModel/Identifiers.h"
#include "LumaroCore/Support/Fields.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

namespace lumaro {

/// What the one who asked writes to its standard streams, and its exit status.
struct BoardAnswer {
    std::int64_t status = 0;
    std::string out;
    std::string err; ///< whole lines, without the program's name

    static constexpr auto fields() {
        return std::tuple{Field{"status", &BoardAnswer::status}, Field{"out", &BoardAnswer::out},
                          Field{"err", &BoardAnswer::err}};
    }
    bool operator==(const BoardAnswer&) const = default;
};

/// The slot of the person whose application has this status; none while it is on no board.
std::optional<PartnerID> slotInStatus(std::string_view json);

} // namespace lumaro
