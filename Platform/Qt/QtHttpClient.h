// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/HttpClient.h"

#include <memory>

class QNetworkAccessManager;

namespace lumaro {

/// HTTP through Qt Network, with the system's proxy and certificates, in the event loop of the thread that made it.
/// It follows a redirect within one scheme, host and port; any other is the answer itself. Calls do not outlive it.
class QtHttpClient final : public HttpClient {
public:
    QtHttpClient();
    ~QtHttpClient() override;

    [[nodiscard]] std::unique_ptr<Call> send(HttpRequest request, std::move_only_function<void(Answer)> then) override;

private:
    std::unique_ptr<QNetworkAccessManager> manager_;
};

} // namespace lumaro
