// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Sleeper.h"

#include <cstddef>
#include <expected>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace lumaro {

struct HttpHeader {
    std::string name; ///< lower case
    std::string value;

    bool operator==(const HttpHeader&) const = default;
};

struct HttpRequest {
    std::string method;
    std::string url;
    std::vector<HttpHeader> headers;
    std::string body;
    Seconds timeout{30};
    /// An answer with a longer body is a failure, as soon as that shows.
    std::size_t maxBodyBytes = std::size_t{64} * 1024 * 1024;
};

struct HttpResponse {
    int status = 0;
    std::string body;

    bool isSuccess() const { return status >= 200 && status < 300; }
};

/// No answer came: no connection, a time-out, a certificate that is not trusted.
struct HttpFailure {
    std::string message; ///< the library's own words, for the log; never a header's value
};

/// HTTP, as far as the clients of the room need it. Redirects to another host are not followed.
class HttpClient {
public:
    /// A request under way. Dropping it cancels the request: its `then` is not called any more.
    class Call {
    public:
        Call() = default;
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;
        virtual ~Call() = default;
    };
    using Answer = std::expected<HttpResponse, HttpFailure>;

    HttpClient() = default;
    HttpClient(const HttpClient&) = delete;
    HttpClient& operator=(const HttpClient&) = delete;
    virtual ~HttpClient() = default;

    /// Calls `then` once with the answer, whatever its status, on the caller's thread and never from within this call.
    /// `then` may drop its own call.
    [[nodiscard]] virtual std::unique_ptr<Call> send(HttpRequest request,
                                                     std::move_only_function<void(Answer)> then) = 0;
};

} // namespace lumaro
