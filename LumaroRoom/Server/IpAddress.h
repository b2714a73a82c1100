// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace lumaro {

/// An IP address; one of version 4 in its form mapped to version 6, so that either way of writing it is the same.
struct IpAddress {
    std::array<std::uint8_t, 16> bytes{};

    /// A zone, as in fe80::1%eth0, is left out.
    static std::optional<IpAddress> parse(std::string_view text);

    bool isV4() const;
    std::string text() const;
    /// Whom limits count: an address of version 4, the /64 network of one of version 6.
    std::string origin() const;

    bool operator==(const IpAddress&) const = default;
};

/// All addresses that begin with the same bits.
struct IpRange {
    IpAddress first;
    std::size_t prefixBits = 128; ///< of the mapped form

    /// Reads an address, or a network like 10.0.0.0/8.
    static std::optional<IpRange> parse(std::string_view text);
    bool contains(const IpAddress& address) const;

    bool operator==(const IpRange&) const = default;
};

/// Who sent a request: the peer, or, when that is a trusted proxy, the last address in its X-Forwarded-For that is
/// none.
IpAddress clientAddress(const IpAddress& peer, std::string_view forwardedFor, std::span<const IpRange> trustedProxies);

} // namespace lumaro
