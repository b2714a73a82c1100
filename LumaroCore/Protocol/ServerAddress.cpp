// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Protocol/ServerAddress.h"

#include "LumaroCore/Support/Unicode.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <ranges>

namespace lumaro {
namespace {

using Fault = ServerAddress::Fault;
using Ipv4 = std::array<unsigned, 4>;

constexpr char lowerCased(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string inLowerCase(std::string_view text) {
    std::string result{text};
    std::ranges::transform(result, result.begin(), lowerCased);
    return result;
}

// A number that takes up the whole text, written without needless zeros.
std::optional<unsigned> numberIn(std::string_view text, unsigned most) {
    unsigned number = 0;
    const auto* const last = text.data() + text.size();
    const auto [end, code] = std::from_chars(text.data(), last, number);
    if (code != std::errc{} || end != last || number > most || (text.size() > 1 && text.front() == '0')) return {};
    return number;
}

std::optional<Ipv4> ipv4In(std::string_view host) {
    Ipv4 address{};
    std::size_t count = 0;
    for (const auto part : std::views::split(host, '.')) {
        const auto number = numberIn(std::string_view{part.begin(), part.end()}, 255);
        if (!number || count == address.size()) return std::nullopt;
        address.at(count++) = *number;
    }
    return count == address.size() ? std::optional{address} : std::nullopt;
}

bool isNearby(const Ipv4& address) {
    const auto a = address[0];
    const auto b = address[1];
    return a == 127 || a == 10 || (a == 172 && b >= 16 && b <= 31) || (a == 192 && b == 168) ||
           (a == 169 && b == 254) || (a == 100 && b >= 64 && b <= 127);
}

// Between its brackets; what is no address does not answer either.
bool isIpv6(std::string_view text) {
    return text.contains(':') && text.size() <= 39 && !text.contains(":::") && std::ranges::all_of(text, [](char c) {
               return c == ':' || c == '.' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
           });
}

// As RFC 1123 has names, and without a number at its end, which would make it an IPv4 address of another spelling.
bool isDomainName(std::string_view host) {
    if (host.empty() || host.size() > 253) return false;
    std::string_view last;
    for (const auto part : std::views::split(host, '.')) {
        last = std::string_view{part.begin(), part.end()};
        const bool isLabel = !last.empty() && last.size() <= 63 && last.front() != '-' && last.back() != '-' &&
                             std::ranges::all_of(last, [](char c) {
                                 return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
                             });
        if (!isLabel) return false;
    }
    return last.front() < '0' || last.front() > '9';
}

bool isAddressHost(std::string_view host) {
    if (host.starts_with('[')) return host.size() > 2 && host.ends_with(']') && isIpv6(host.substr(1, host.size() - 2));
    return ipv4In(host) || isDomainName(host);
}

// "host:7700" and "[fe80::1]:7700" in two; the port keeps its colon.
std::pair<std::string_view, std::string_view> hostAndPort(std::string_view authority) {
    const auto bracket = authority.rfind(']');
    const auto colon = authority.find(':', bracket == std::string_view::npos ? 0 : bracket);
    const auto end = std::min(colon, authority.size());
    return {authority.substr(0, end), authority.substr(end)};
}

bool isBasePath(std::string_view path) {
    const bool isPlain = std::ranges::all_of(path, [](char c) { return c > ' ' && c < '\x7f'; });
    return isPlain && path.find_first_of("\"<>\\^`{|}?#@") == std::string_view::npos;
}

} // namespace

bool isNearbyHost(std::string_view host) {
    if (const auto address = ipv4In(host)) return isNearby(*address);
    if (host.starts_with('[')) {
        const auto address = host.substr(1);
        // fc00::/7 and fe80::/10; an address that begins with zeros alone is "::1" or none of these.
        const auto first = address.substr(0, address.find(':'));
        const bool isLocal =
            first.size() == 4 && (first.starts_with("fc") || first.starts_with("fd") ||
                                  (first.starts_with("fe") && first.at(2) >= '8' && first.at(2) <= 'b'));
        return address == "::1]" || isLocal;
    }
    return host == "localhost" || host.ends_with(".localhost") || (host.ends_with(".local") && host.size() > 6);
}

std::expected<ServerAddress, Fault> ServerAddress::parse(std::string_view typed) {
    auto rest = trimmed(typed);
    if (rest.empty()) return std::unexpected(Fault::empty);
    if (rest.size() > maxLength) return std::unexpected(Fault::noAddress);
    std::string scheme;
    if (const auto mark = rest.find("://"); mark != std::string_view::npos) {
        scheme = inLowerCase(rest.substr(0, mark));
        if (scheme != "https" && scheme != "http") return std::unexpected(Fault::noAddress);
        rest.remove_prefix(mark + 3);
    }
    const auto slash = std::min(rest.find('/'), rest.size());
    auto path = rest.substr(slash);
    while (path.ends_with('/')) path.remove_suffix(1);
    const auto [written, port] = hostAndPort(rest.substr(0, slash));
    auto host = inLowerCase(written);
    constexpr unsigned maxPort = 65535;
    const bool isPort = port.empty() || numberIn(port.substr(1), maxPort).value_or(0) > 0;
    if (!isAddressHost(host) || !isPort || !isBasePath(path)) return std::unexpected(Fault::noAddress);
    const bool isNear = isNearbyHost(host);
    if (scheme.empty()) scheme = isNear ? "http" : "https";
    if (scheme == "http" && !isNear) return std::unexpected(Fault::notEncrypted);
    auto url = scheme + "://" + host;
    url.append(port).append(path);
    return ServerAddress{std::move(url), std::move(host)};
}

} // namespace lumaro
