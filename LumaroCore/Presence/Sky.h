// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace lumaro {

/// The sky as the cards paint it.
enum class Sky : std::uint8_t { clear, cloud, rain, night, fog, snow, storm };

constexpr std::array<std::string_view, 7> namesOf(Sky) {
    return {"clear", "cloud", "rain", "night", "fog", "snow", "storm"};
}

/// Of a WMO weather interpretation code. Codes that say nothing of the sky are rain; only a clear sky knows the night.
Sky skyOf(std::int64_t code, bool isDay);

} // namespace lumaro
