// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// An http or https URL, taken apart.
struct Url {
    bool isSecure = false;
    std::string host; ///< lower case; one of IP version 6 without its brackets
    std::uint16_t port = 80;
    std::string target = "/"; ///< path and query

    /// None for anything else, and for URLs with a user or a fragment.
    static std::optional<Url> parse(std::string_view text);

    /// Scheme, host and port, as browsers send them in "Origin": the scheme's own port is left out.
    std::string origin() const;
    /// Host and port, as they stand in "Host".
    std::string authority() const;
};

} // namespace lumaro
