// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Protocol/WindowKey.h"

#include "LumaroCore/Support/JsonCodec.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace lumaro {
namespace {

constexpr std::array<std::string_view, 3> ownHosts{"localhost", "127.0.0.1", "[::1]"};

bool isVisible(char c) {
    return c > ' ' && c < '\x7f';
}

bool isHostCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' || c == '-';
}

bool isHost(std::string_view host) {
    if (host.starts_with('[') && host.ends_with(']')) {
        const auto address = host.substr(1, host.size() - 2);
        return address.find(':') != std::string_view::npos &&
               address.find_first_not_of("0123456789abcdefABCDEF:.") == std::string_view::npos;
    }
    return !host.empty() && std::ranges::all_of(host, isHostCharacter);
}

bool isPort(std::string_view digits) {
    constexpr int highest = 65535;
    constexpr std::size_t longest = 5;
    if (digits.empty() || digits.size() > longest) return false;
    int port = 0;
    for (const char digit : digits) {
        if (digit < '0' || digit > '9') return false;
        port = port * 10 + (digit - '0');
    }
    return port > 0 && port <= highest;
}

} // namespace

// Stricter than browsers are, which read "http:\\localhost\@elsewhere" in ways of their own.
bool isWindowPage(std::string_view url) {
    if (url.size() > maxWindowPageBytes || !std::ranges::all_of(url, isVisible)) return false;
    if (url.find_first_of("\"<>\\^`{|}#@") != std::string_view::npos) return false;
    const bool isSecure = url.starts_with("https://");
    if (!isSecure && !url.starts_with("http://")) return false;
    url.remove_prefix(isSecure ? std::string_view{"https://"}.size() : std::string_view{"http://"}.size());
    auto host = url.substr(0, url.find_first_of("/?"));
    if (const auto colon = host.rfind(':'); colon != std::string_view::npos && !host.ends_with(']')) {
        if (!isPort(host.substr(colon + 1))) return false;
        host = host.substr(0, colon);
    }
    return isSecure ? isHost(host) : std::ranges::find(ownHosts, host) != ownHosts.end();
}

bool isWindowKey(std::string_view key) {
    return !key.empty() && key.size() <= maxWindowKeyBytes && std::ranges::all_of(key, isVisible);
}

bool readJson(JsonReader& reader, JsonValue value, WindowKey& out) {
    if (!reader.readObject(value, bindFields(out))) return false;
    if (!isWindowPage(out.page)) return reader.failUnder("page", DecodeFault::invalidValue, "no URL of a page");
    if (!isWindowKey(out.key)) return reader.failUnder("key", DecodeFault::invalidValue, "no key of a page");
    return true;
}

void writeJson(JsonWriter& writer, const WindowKey& value) {
    writer.openObject();
    writeFields(writer, value);
    writer.closeObject();
}

template std::expected<WindowKey, DecodeError> Wire::decode<WindowKey>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<WindowKey>(const WindowKey& value);

} // namespace lumaro
