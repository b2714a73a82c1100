// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/HttpClient.h"
#include "LumaroRoom/Server/IpAddress.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

struct ServerError;

/// A request as the routes see it, whole.
struct ServerRequest {
    std::string method;
    std::string path;  ///< begins with a slash
    std::string query; ///< without its question mark
    std::string token; ///< behind "Bearer" in "Authorization"; empty when there is none
    std::string body;
    IpAddress client;
};

struct ServerResponse {
    int status = 200;
    std::vector<HttpHeader> headers;
    std::string body;
};

/// Takes the answer to a request, once, on the thread that asked.
using Respond = std::move_only_function<void(ServerResponse)>;

/// The value of a query's key, percent-decoded nowhere; none when the key is missing.
std::optional<std::string_view> queryValue(std::string_view query, std::string_view key);
/// What stands behind "Bearer" in an "Authorization" header; empty for any other.
std::string_view bearerToken(std::string_view authorization);

/// An answer in JSON, which nobody between the room and the device keeps.
ServerResponse jsonResponse(int status, std::string body);
/// {"code","message"}.
ServerResponse errorResponse(int status, std::string_view code, std::string_view message);
/// The same, with all that an error can say. One of too many calls says when to come back.
ServerResponse errorResponse(int status, const ServerError& error);
/// The same answer to every call whose token does not open what it asks for.
ServerResponse unauthorizedResponse();

} // namespace lumaro
