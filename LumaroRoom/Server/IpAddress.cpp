// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/IpAddress.h"

#include <arpa/inet.h>

#include <algorithm>
#include <charconv>

namespace lumaro {
namespace {

constexpr std::array<std::uint8_t, 12> mappedPrefix{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xff, 0xff};
constexpr std::size_t mappedBits = mappedPrefix.size() * 8;
constexpr std::size_t networkBytes = 8; // of a /64

std::string textOf(int family, const std::uint8_t* bytes) {
    std::array<char, INET6_ADDRSTRLEN> text{};
    return inet_ntop(family, bytes, text.data(), text.size()) == nullptr ? "" : text.data();
}

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

} // namespace

std::optional<IpAddress> IpAddress::parse(std::string_view text) {
    // The zone behind an address of a link says where it is a neighbour, not who it is.
    const bool isV6 = text.find(':') != std::string_view::npos;
    const std::string terminated{isV6 ? text.substr(0, text.find('%')) : text};
    IpAddress address;
    if (inet_pton(AF_INET6, terminated.c_str(), address.bytes.data()) == 1) return address;
    std::ranges::copy(mappedPrefix, address.bytes.begin());
    if (inet_pton(AF_INET, terminated.c_str(), address.bytes.data() + mappedPrefix.size()) == 1) return address;
    return std::nullopt;
}

bool IpAddress::isV4() const {
    return std::ranges::equal(mappedPrefix, std::span{bytes}.first<mappedPrefix.size()>());
}

std::string IpAddress::text() const {
    return isV4() ? textOf(AF_INET, bytes.data() + mappedPrefix.size()) : textOf(AF_INET6, bytes.data());
}

std::string IpAddress::origin() const {
    if (isV4()) return text();
    auto network = bytes;
    std::ranges::fill(std::span{network}.subspan<networkBytes>(), std::uint8_t{0});
    return textOf(AF_INET6, network.data()) + "/64";
}

std::optional<IpRange> IpRange::parse(std::string_view text) {
    const auto slash = text.find('/');
    const auto address = IpAddress::parse(text.substr(0, slash));
    if (!address) return std::nullopt;
    if (slash == std::string_view::npos) return IpRange{*address};
    const auto digits = text.substr(slash + 1);
    std::size_t bits = 0;
    const auto [end, code] = std::from_chars(digits.begin(), digits.end(), bits);
    const bool isV4 = text.find(':') == std::string_view::npos;
    if (code != std::errc{} || end != digits.end() || bits > (isV4 ? 32 : 128)) return std::nullopt;
    return IpRange{*address, isV4 ? mappedBits + bits : bits};
}

bool IpRange::contains(const IpAddress& address) const {
    const std::size_t whole = prefixBits / 8;
    if (!std::equal(first.bytes.begin(), first.bytes.begin() + static_cast<std::ptrdiff_t>(whole),
                    address.bytes.begin())) {
        return false;
    }
    if (prefixBits % 8 == 0) return true;
    const auto shift = 8 - prefixBits % 8;
    return (first.bytes[whole] >> shift) == (address.bytes[whole] >> shift);
}

IpAddress clientAddress(const IpAddress& peer, std::string_view forwardedFor, std::span<const IpRange> trustedProxies) {
    const auto isTrusted = [&](const IpAddress& address) {
        return std::ranges::any_of(trustedProxies, [&](const IpRange& range) { return range.contains(address); });
    };
    IpAddress client = peer;
    while (isTrusted(client) && !forwardedFor.empty()) {
        const auto comma = forwardedFor.rfind(',');
        const auto last = comma == std::string_view::npos ? forwardedFor : forwardedFor.substr(comma + 1);
        const auto address = IpAddress::parse(trimmed(last));
        if (!address) break;
        client = *address;
        forwardedFor = comma == std::string_view::npos ? std::string_view{} : forwardedFor.substr(0, comma);
    }
    return client;
}

} // namespace lumaro
