// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/HttpClient.h"

#include <memory>

namespace boost::asio {
class io_context;
}

namespace lumaro {

/// HTTP on a server's event loop, a connection for each request. No redirect is followed, and an answer over 1 MiB is a
/// failure. On the loop's thread; the loop outlives the client and its calls.
class AsioHttpClient final : public HttpClient {
public:
    explicit AsioHttpClient(boost::asio::io_context& context);
    ~AsioHttpClient() override;

    [[nodiscard]] std::unique_ptr<Call> send(HttpRequest request, std::move_only_function<void(Answer)> then) override;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace lumaro
