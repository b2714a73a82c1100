// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Fields.h"
#include "LumaroCore/Support/Instant.h"

#include <optional>
#include <string>
#include <tuple>

namespace lumaro {

/// What a device is told of its partner.
struct PartnerAnswer {
    std::optional<std::string> name;
    bool online = false;
    std::optional<Instant> lastSeen;

    static constexpr auto fields() {
        return std::tuple{Field{"name", &PartnerAnswer::name}, Field{"online", &PartnerAnswer::online},
                          Field{"lastSeen", &PartnerAnswer::lastSeen}};
    }
};

} // namespace lumaro
