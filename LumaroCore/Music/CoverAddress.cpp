// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Music/CoverAddress.h"

#include <algorithm>
#include <array>
#include <utility>

namespace lumaro {
namespace {

constexpr std::string_view secure = "https://";
constexpr std::size_t longestUrl = 2048;

struct Parts {
    std::string_view host; ///< as it is written, with a port or user if it has one
    std::string_view path; ///< with what follows
};

std::optional<Parts> partsOf(std::string_view url) {
    const auto isPlain = [](char c) { return c > ' ' && c <= '~' && c != '\\'; };
    if (url.size() > longestUrl || !std::ranges::all_of(url, isPlain) || !url.starts_with(secure)) return std::nullopt;
    url.remove_prefix(secure.size());
    const auto end = std::min(url.find_first_of("/?#"), url.size());
    return Parts{url.substr(0, end), url.substr(end)};
}

bool isHostName(std::string_view host) {
    const auto isOfName = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '.';
    };
    return !host.empty() && std::ranges::all_of(host, isOfName);
}

bool isHexadecimal(std::string_view text) {
    const auto isDigit = [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); };
    return !text.empty() && std::ranges::all_of(text, isDigit);
}

// The picture's path is a prefix of 16 digits, which names its kind and size, and 24 digits of its own.
constexpr std::size_t pictureDigits = 40;
constexpr std::array<std::string_view, 2> otherSizes{"ab67616d00004851", "ab67616d00001e02"};
constexpr std::string_view largeSize = "ab67616d0000b273";
constexpr std::string_view scdnImages = "https://i.scdn.co/image/";

bool isOfScdn(std::string_view host) {
    return host == "i.scdn.co" || (isHostName(host) && host.ends_with(".spotifycdn.com"));
}

bool isOfMzstatic(std::string_view host) {
    return isHostName(host) && host.ends_with(".mzstatic.com");
}

void enlargeScdn(std::string& url) {
    const auto start = url.rfind('/') + 1;
    const std::string_view picture = std::string_view{url}.substr(start);
    if (picture.size() != pictureDigits || !isHexadecimal(picture)) return;
    const auto size = picture.substr(0, largeSize.size());
    if (std::ranges::find(otherSizes, size) != otherSizes.end()) url.replace(start, largeSize.size(), largeSize);
}

// "…/100x100bb.jpg" names the size in the last part of its path.
void resizeMzstatic(std::string& url) {
    const auto start = url.rfind('/') + 1;
    const std::string_view last = std::string_view{url}.substr(start);
    const auto digits = [](std::string_view text) {
        return std::min(text.find_first_not_of("0123456789"), text.size());
    };
    const auto width = digits(last);
    if (width == 0 || width == last.size() || last[width] != 'x') return;
    const auto height = digits(last.substr(width + 1));
    if (height != 0) url.replace(start, width + 1 + height, "512x512");
}

} // namespace

bool CoverAddress::isOfCatalogue(std::string_view url) {
    const auto parts = partsOf(url);
    return parts && parts->path.starts_with('/') && (isOfScdn(parts->host) || isOfMzstatic(parts->host));
}

std::string CoverAddress::inRoom(const CoupleEndpoints& endpoints, const UUID& id) {
    return urlWithPath(endpoints.serverURL, {"couples", endpoints.coupleId, "covers", id.lowerString()});
}

std::optional<UUID> CoverAddress::idInRoom(std::string_view url, std::string_view coupleId) {
    const bool isOfHttp = url.starts_with("http://") || url.starts_with(secure);
    if (url.size() > longestUrl || url.size() < UUID::textSize || !isOfHttp) return std::nullopt;
    const auto id = UUID::parse(url.substr(url.size() - UUID::textSize));
    if (!id || !url.ends_with(inRoom({"", std::string{coupleId}}, *id))) return std::nullopt;
    return id;
}

bool CoverAddress::mayBeFetched(std::string_view url) {
    const auto parts = partsOf(url);
    if (!parts || !isHostName(parts->host)) return false;
    const auto dot = parts->host.rfind('.');
    if (dot == std::string_view::npos) return false;
    constexpr std::array<std::string_view, 6> nearby{"localhost", "local", "localdomain", "internal", "lan", "home"};
    const auto top = parts->host.substr(dot + 1);
    const auto isLetter = [](char c) { return c >= 'a' && c <= 'z'; };
    // An address has a number there; names of letters alone are those of the network at large.
    return std::ranges::all_of(top, isLetter) && top.size() >= 2 && std::ranges::find(nearby, top) == nearby.end() &&
           !parts->host.ends_with(".home.arpa");
}

std::string CoverAddress::atOurSize(std::string url) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 2> left{
        {{"https://open.spotify.com/image/", scdnImages},
         {"http://is1.mzstatic.com/", "https://is1-ssl.mzstatic.com/"}}};
    for (const auto& [before, now] : left) {
        if (url.starts_with(before)) url.replace(0, before.size(), now);
    }
    const auto parts = partsOf(url);
    if (!parts || !parts->path.starts_with('/')) return url;
    if (isOfScdn(parts->host)) {
        enlargeScdn(url);
    } else if (isOfMzstatic(parts->host)) {
        resizeMzstatic(url);
    }
    return url;
}

} // namespace lumaro
