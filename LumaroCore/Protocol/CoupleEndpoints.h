// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Hash.h"
#include "LumaroCore/Support/UUID.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace lumaro {

/// A URL with path components appended, each percent-encoded as one component (RFC 3986, `pchar`); a query or fragment
/// of the base is kept behind the path.
std::string urlWithPath(std::string_view base, std::initializer_list<std::string_view> components);

/// The URLs of one couple on a server.
struct CoupleEndpoints {
    std::string serverURL;
    std::string coupleId;

    /// The room's socket: scheme `wss` for `https`, `ws` for `http`, any other as it is.
    std::string webSocket() const;
    std::string snapshot() const;
    std::string partner() const;
    std::string weather() const;
    std::string windowKey() const;
    std::string calendarConnect() const;
    std::string media(const UUID& id) const;

    void hashInto(Hasher& hasher) const;
    bool operator==(const CoupleEndpoints&) const = default;
};

} // namespace lumaro
