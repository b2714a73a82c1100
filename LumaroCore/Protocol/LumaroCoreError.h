// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <variant>

namespace lumaro {

/// What can go wrong between a device and its room, with the text people see.
struct LumaroCoreError {
    struct InvalidToken {
        std::string text; ///< as it was given, without surrounding white space
        bool operator==(const InvalidToken&) const = default;
    };
    struct BadServerResponse {
        int status = 0;
        bool operator==(const BadServerResponse&) const = default;
    };
    struct ScriptFailed {
        std::string detail;
        bool operator==(const ScriptFailed&) const = default;
    };
    struct NotConnected {
        bool operator==(const NotConnected&) const = default;
    };
    struct TransportClosed {
        bool operator==(const TransportClosed&) const = default;
    };
    struct Unauthorized {
        bool operator==(const Unauthorized&) const = default;
    };
    struct ArtworkUnavailable {
        bool operator==(const ArtworkUnavailable&) const = default;
    };

    std::variant<InvalidToken, BadServerResponse, ScriptFailed, NotConnected, TransportClosed, Unauthorized,
                 ArtworkUnavailable>
        value;

    std::string errorDescription() const;

    bool operator==(const LumaroCoreError&) const = default;
};

} // namespace lumaro
