// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Pairing/InviteLink.h"

#include "LumaroCore/Support/PercentEncoding.h"
#include "LumaroCore/Support/Unicode.h"

#include <algorithm>
#include <initializer_list>

namespace lumaro {
namespace {

constexpr std::string_view whiteSpace = " \t\r\n\f\v";
constexpr std::string_view ownLink = "lumaro://join-invite";
constexpr std::size_t maxServerLength = 200;

/// A link: the invite's id, and the server that it names.
struct Found {
    std::string id;
    std::optional<std::string> server;
};

constexpr char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isIdCharacter(char c) {
    return (lower(c) >= 'a' && lower(c) <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
}

// The id that a text begins with. An escaped character would be part of it, so such an id is none.
std::optional<std::string> leadingId(std::string_view text) {
    const auto end = static_cast<std::size_t>(std::ranges::find_if_not(text, isIdCharacter) - text.begin());
    const auto id = text.substr(0, end);
    if (!isInviteId(id) || text.substr(end).starts_with('%')) return std::nullopt;
    return std::string{id};
}

// The server's address, if it is one.
std::optional<std::string> serverOf(std::string_view url) {
    const bool isWeb = url.starts_with("https://") || url.starts_with("http://");
    if (!isWeb || url.size() > maxServerLength || url.ends_with("//")) return std::nullopt;
    const bool isPlain = std::ranges::all_of(url, [](char c) { return c > ' ' && c < '\x7f'; });
    if (!isPlain || url.find_first_of("\"<>\\^`{|}?#@") != std::string_view::npos) return std::nullopt;
    while (url.ends_with('/')) url.remove_suffix(1);
    return std::string{url};
}

// In a word that holds this path behind a host: "and/for/everyone" is prose.
std::optional<Found> behindPath(std::string_view word, std::string_view path) {
    for (auto at = word.find(path); at != std::string_view::npos; at = word.find(path, at + 1)) {
        const auto before = word.substr(0, at);
        if (!before.empty() && before.find_first_of(".:") == std::string_view::npos) continue;
        auto id = leadingId(word.substr(at + path.size()));
        if (!id) continue;
        // A link may stand in brackets or quotes.
        const auto scheme = std::min(before.find("https://"), before.find("http://"));
        return Found{std::move(*id), serverOf(before.substr(std::min(scheme, before.size())))};
    }
    return std::nullopt;
}

std::optional<std::string_view> valueIn(std::string_view query, std::string_view key) {
    query = query.substr(0, query.find('#'));
    while (!query.empty()) {
        const auto pair = query.substr(0, query.find('&'));
        if (pair.starts_with(key)) return pair.substr(key.size());
        query.remove_prefix(std::min(pair.size() + 1, query.size()));
    }
    return std::nullopt;
}

std::optional<int> hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    const char small = lower(c);
    return small >= 'a' && small <= 'f' ? std::optional{small - 'a' + 10} : std::nullopt;
}

std::string percentDecoded(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto high = text[i] == '%' && i + 2 < text.size() ? hexDigit(text[i + 1]) : std::nullopt;
        const auto low = high ? hexDigit(text[i + 2]) : std::nullopt;
        decoded += low ? static_cast<char>(*high * 16 + *low) : text[i];
        if (low) i += 2;
    }
    return decoded;
}

std::optional<Found> inOwnLink(std::string_view word) {
    const auto found = std::ranges::search(word, ownLink, {}, lower, lower);
    if (found.empty()) return std::nullopt;
    std::string_view rest{found.end(), word.end()};
    if (rest.starts_with('/')) rest.remove_prefix(1);
    if (!rest.starts_with('?')) return std::nullopt;
    auto id = leadingId(valueIn(rest.substr(1), "i=").value_or(""));
    if (!id) return std::nullopt;
    return Found{std::move(*id), serverOf(percentDecoded(valueIn(rest.substr(1), "s=").value_or("")))};
}

// The first link of the text.
std::optional<Found> linkIn(std::string_view text) {
    while (true) {
        text.remove_prefix(std::min(text.find_first_not_of(whiteSpace), text.size()));
        if (text.empty()) return std::nullopt;
        const auto word = text.substr(0, text.find_first_of(whiteSpace));
        if (auto found = inOwnLink(word)) return found;
        for (const std::string_view path : {"/for/", "/dl/"}) {
            if (auto found = behindPath(word, path)) return found;
        }
        text.remove_prefix(word.size());
    }
}

} // namespace

std::string normalizeCode(std::string_view typed) {
    std::string code;
    while (!typed.empty() && code.size() < joinCodeLength) {
        const auto character = takeCharacter(typed);
        if (!character) {
            typed.remove_prefix(1);
        } else if (const auto value = digitValue(*character)) {
            code.push_back(static_cast<char>('0' + *value));
        }
    }
    return code;
}

bool isInviteId(std::string_view text) {
    return text.size() >= 8 && text.size() <= 64 && std::ranges::all_of(text, isIdCharacter);
}

std::optional<std::string> inviteIdIn(std::string_view text) {
    auto found = linkIn(text);
    return found ? std::optional{std::move(found->id)} : std::nullopt;
}

std::optional<std::string> inviteServerIn(std::string_view text) {
    auto found = linkIn(text);
    return found ? std::move(found->server) : std::nullopt;
}

std::string ownInviteLink(std::string_view inviteId, std::string_view serverURL) {
    return std::string{ownLink} + "?i=" + std::string{inviteId} + "&s=" + percentEncoded(serverURL);
}

} // namespace lumaro
