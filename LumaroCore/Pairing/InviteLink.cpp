// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Pairing/InviteLink.h"

#include "LumaroCore/Support/Unicode.h"

#include <algorithm>
#include <initializer_list>

namespace lumaro {
namespace {

constexpr std::string_view whiteSpace = " \t\r\n\f\v";
constexpr std::string_view ownLink = "lumaro://join-invite";

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

// In a word that holds this path behind a host: "and/for/everyone" is prose.
std::optional<std::string> idBehindPath(std::string_view word, std::string_view path) {
    for (auto at = word.find(path); at != std::string_view::npos; at = word.find(path, at + 1)) {
        const auto before = word.substr(0, at);
        if (!before.empty() && before.find_first_of(".:") == std::string_view::npos) continue;
        if (auto id = leadingId(word.substr(at + path.size()))) return id;
    }
    return std::nullopt;
}

std::optional<std::string> idInQuery(std::string_view query) {
    query = query.substr(0, query.find('#'));
    while (!query.empty()) {
        const auto pair = query.substr(0, query.find('&'));
        if (pair.starts_with("i=")) return leadingId(pair.substr(2));
        query.remove_prefix(std::min(pair.size() + 1, query.size()));
    }
    return std::nullopt;
}

std::optional<std::string> idInOwnLink(std::string_view word) {
    const auto found = std::ranges::search(word, ownLink, {}, lower, lower);
    if (found.empty()) return std::nullopt;
    std::string_view rest{found.end(), word.end()};
    if (rest.starts_with('/')) rest.remove_prefix(1);
    return rest.starts_with('?') ? idInQuery(rest.substr(1)) : std::nullopt;
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
    while (true) {
        text.remove_prefix(std::min(text.find_first_not_of(whiteSpace), text.size()));
        if (text.empty()) return std::nullopt;
        const auto word = text.substr(0, text.find_first_of(whiteSpace));
        if (auto id = idInOwnLink(word)) return id;
        for (const std::string_view path : {"/for/", "/dl/"}) {
            if (auto id = idBehindPath(word, path)) return id;
        }
        text.remove_prefix(word.size());
    }
}

} // namespace lumaro
