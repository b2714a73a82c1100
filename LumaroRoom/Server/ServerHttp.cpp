// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/ServerHttp.h"

#include "LumaroCore/Pairing/PairingMessages.h"
#include "LumaroCore/Support/Fatal.h"
#include "LumaroCore/Support/Wire.h"

#include <algorithm>

namespace lumaro {
namespace {

// Texts that have been read from JSON, or are our own.
std::string jsonOf(const ServerError& error) {
    auto text = Wire::encode(error);
    if (!text) fatal("an error cannot be written");
    return std::move(*text);
}

} // namespace

std::optional<std::string_view> queryValue(std::string_view query, std::string_view key) {
    while (!query.empty()) {
        const auto pair = query.substr(0, query.find('&'));
        query.remove_prefix(std::min(query.size(), pair.size() + 1));
        const auto equals = pair.find('=');
        if (equals != std::string_view::npos && pair.substr(0, equals) == key) return pair.substr(equals + 1);
    }
    return std::nullopt;
}

std::string_view bearerToken(std::string_view authorization) {
    constexpr std::string_view scheme = "bearer ";
    const auto isScheme = [](char c, char lower) { return (c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c) == lower; };
    if (!std::ranges::equal(authorization.substr(0, scheme.size()), scheme, isScheme)) return {};
    return authorization.substr(scheme.size());
}

ServerResponse jsonResponse(int status, std::string body) {
    return {status, {{"content-type", "application/json"}, {"cache-control", "no-store"}}, std::move(body)};
}

ServerResponse errorResponse(int status, std::string_view code, std::string_view message) {
    return errorResponse(status, ServerError{std::string{code}, std::string{message}, std::nullopt, std::nullopt});
}

ServerResponse errorResponse(int status, const ServerError& error) {
    auto response = jsonResponse(status, jsonOf(error));
    constexpr int tooMany = 429;
    if (status == tooMany) response.headers.push_back({"retry-after", "60"});
    return response;
}

ServerResponse unauthorizedResponse() {
    return errorResponse(401, "unauthorized", "this token does not open this board");
}

} // namespace lumaro
