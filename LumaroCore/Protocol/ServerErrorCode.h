// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace lumaro {

/// Why the room did not take a message. An open set: a code that this version does not know keeps its text.
struct ServerErrorCode {
    static constexpr std::string_view limitExceeded = "limit_exceeded"; ///< one of the room's limits was reached
    static constexpr std::string_view badMessage = "bad_message";       ///< the room could not read it
    static constexpr std::string_view unauthorized = "unauthorized";    ///< this device's token is not accepted

    std::string raw;

    bool isUnknown() const { return raw != limitExceeded && raw != badMessage && raw != unauthorized; }
    bool operator==(const ServerErrorCode&) const = default;
};

} // namespace lumaro
