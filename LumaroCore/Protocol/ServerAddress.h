// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <string>
#include <string_view>
#include <utility>

namespace lumaro {

/// The base URL of a board's server, as far as it may be one (P46): https, or http where no stranger's network lies in
/// between.
class ServerAddress {
public:
    /// Why a text is none.
    enum class Fault : std::uint8_t {
        empty,
        noAddress,    ///< nothing that a server could have
        notEncrypted, ///< http to a host that may be anywhere
    };
    static constexpr std::size_t maxLength = 200;

    /// The address in a text as people type it: without a scheme it is https, or http where that may be. White space
    /// around it and slashes at its end are no part of it; scheme and host are in lower case from then on.
    static std::expected<ServerAddress, Fault> parse(std::string_view typed);

    /// Without a slash at its end.
    [[nodiscard]] const std::string& url() const { return url_; }
    /// An IPv6 address is in brackets, as in the URL.
    [[nodiscard]] const std::string& host() const { return host_; }
    [[nodiscard]] bool isEncrypted() const { return url_.starts_with("https://"); }

    bool operator==(const ServerAddress&) const = default;

private:
    ServerAddress(std::string url, std::string host) : url_(std::move(url)), host_(std::move(host)) {}

    std::string url_;
    std::string host_;
};

/// Whether that host is this computer or one that only people of its own network reach: loopback (RFC 1122, 4291,
/// "localhost"), private (RFC 1918, 4193, and 6598, which private networks over the internet use), link-local (RFC
/// 3927, 4291) or a name ending in ".local" (RFC 6762). In lower case; an IPv6 address is in brackets.
bool isNearbyHost(std::string_view host);

} // namespace lumaro
