// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace lumaro {

/// Why a picture cannot be put up.
enum class MediaFault : std::uint8_t {
    notAPicture, ///< by its bytes it is no JPEG, PNG or WebP
    tooLarge,    ///< over `BoardSpec::maxMediaBytes`
    notStored,   ///< this device's disk did not take it
    lost,        ///< it waited to go up, and its file is gone
    roomFull,    ///< the room holds as much for this board as it may
    refused,     ///< the room wants no part of it
};

struct MediaError {
    MediaFault fault = MediaFault::refused;
    std::string message; ///< for the log
};

/// What people are told.
std::string_view textOf(MediaFault fault);

} // namespace lumaro
