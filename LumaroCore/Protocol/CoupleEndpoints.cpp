// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Protocol/CoupleEndpoints.h"

#include "LumaroCore/Support/PercentEncoding.h"

#include <algorithm>

namespace lumaro {
namespace {

// Whether the URL has this scheme, written in lower case here and in any case there.
bool hasScheme(std::string_view url, std::string_view scheme) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return url.size() > scheme.size() && url[scheme.size()] == ':' &&
           std::ranges::equal(url.substr(0, scheme.size()), scheme, {}, lower);
}

} // namespace

std::string urlWithPath(std::string_view base, std::initializer_list<std::string_view> components) {
    const auto pathEnd = std::min(base.find_first_of("?#"), base.size());
    auto path = base.substr(0, pathEnd);
    if (path.ends_with('/')) path.remove_suffix(1);
    std::string url{path};
    for (const auto component : components) url.append("/").append(percentEncoded(component, "-._~!$&'()*+,;=:@"));
    return url.append(base.substr(pathEnd));
}

std::string CoupleEndpoints::webSocket() const {
    auto url = urlWithPath(serverURL, {"couples", coupleId, "ws"});
    for (const auto& [scheme, socketScheme] : {std::pair{"https", "wss"}, std::pair{"http", "ws"}}) {
        if (hasScheme(url, scheme)) return socketScheme + url.substr(std::string_view{scheme}.size());
    }
    return url;
}

std::string CoupleEndpoints::snapshot() const {
    return urlWithPath(serverURL, {"couples", coupleId, "snapshot"});
}

std::string CoupleEndpoints::partner() const {
    return urlWithPath(serverURL, {"couples", coupleId, "partner"});
}

std::string CoupleEndpoints::weather() const {
    return urlWithPath(serverURL, {"couples", coupleId, "weather"});
}

std::string CoupleEndpoints::windowKey() const {
    return urlWithPath(serverURL, {"couples", coupleId, "window-key"});
}

std::string CoupleEndpoints::calendarConnect() const {
    return urlWithPath(serverURL, {"couples", coupleId, "calendar", "connect"});
}

std::string CoupleEndpoints::media(const UUID& id) const {
    return urlWithPath(serverURL, {"couples", coupleId, "media", id.lowerString()});
}

void CoupleEndpoints::hashInto(Hasher& hasher) const {
    hasher.add(serverURL);
    hasher.add(coupleId);
}

} // namespace lumaro
