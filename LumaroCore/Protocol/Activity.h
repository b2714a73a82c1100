// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace lumaro {

/// What a device is being used for.
enum class Activity : std::uint8_t { idle, editing };

constexpr std::array<std::string_view, 2> namesOf(Activity) {
    return {"idle", "editing"};
}

} // namespace lumaro
