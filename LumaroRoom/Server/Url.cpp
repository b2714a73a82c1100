// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/Url.h"

#include "LumaroRoom/Server/IpAddress.h"

#include <algorithm>
#include <charconv>

namespace lumaro {
namespace {

constexpr std::uint16_t httpPort = 80;
constexpr std::uint16_t httpsPort = 443;

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string lowered(std::string_view text) {
    std::string lower{text};
    std::ranges::transform(lower, lower.begin(), [](char c) { return lowered(c); });
    return lower;
}

bool isAllowed(char c) {
    return c > ' ' && c <= '~' && c != '#' && c != '@';
}

std::optional<std::uint16_t> parsePort(std::string_view digits) {
    std::uint16_t port = 0;
    const auto [end, code] = std::from_chars(digits.begin(), digits.end(), port);
    return code == std::errc{} && end == digits.end() && port != 0 ? std::optional{port} : std::nullopt;
}

} // namespace

std::optional<Url> Url::parse(std::string_view text) {
    const auto colon = text.find("://");
    if (colon == std::string_view::npos || !std::ranges::all_of(text, isAllowed)) return std::nullopt;
    const auto scheme = lowered(text.substr(0, colon));
    if (scheme != "http" && scheme != "https") return std::nullopt;
    Url url;
    url.isSecure = scheme == "https";
    url.port = url.isSecure ? httpsPort : httpPort;
    text.remove_prefix(colon + 3);
    auto host = text.substr(0, text.find_first_of("/?"));
    text.remove_prefix(host.size());
    if (!text.empty()) url.target = text.front() == '/' ? std::string{text} : "/" + std::string{text};
    if (const auto portColon = host.rfind(':'); portColon != std::string_view::npos && !host.ends_with(']')) {
        const auto port = parsePort(host.substr(portColon + 1));
        if (!port) return std::nullopt;
        url.port = *port;
        host = host.substr(0, portColon);
    }
    if (host.starts_with('[') && host.ends_with(']')) {
        host = host.substr(1, host.size() - 2);
        if (host.find(':') == std::string_view::npos || !IpAddress::parse(host)) return std::nullopt;
    } else if (host.empty() || host.find_first_of("[]:") != std::string_view::npos) {
        return std::nullopt;
    }
    url.host = lowered(host);
    return url;
}

std::string Url::authority() const {
    const bool isV6 = host.find(':') != std::string::npos;
    const std::string name = isV6 ? "[" + host + "]" : host;
    return port == (isSecure ? httpsPort : httpPort) ? name : name + ":" + std::to_string(port);
}

std::string Url::origin() const {
    return (isSecure ? "https://" : "http://") + authority();
}

} // namespace lumaro
