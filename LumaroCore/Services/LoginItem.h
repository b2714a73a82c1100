// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <expected>
#include <string>

namespace lumaro {

/// Whether this program is started when the person logs in. Used on the main thread; takes no longer than a small file.
class LoginItem {
public:
    LoginItem() = default;
    LoginItem(const LoginItem&) = delete;
    LoginItem& operator=(const LoginItem&) = delete;
    virtual ~LoginItem() = default;

    virtual bool isEnabled() = 0;
    /// It is enabled afterwards, or the error says why not, for the log.
    [[nodiscard]] virtual std::expected<void, std::string> enable() = 0;
    /// It is not enabled afterwards; no error when it was not before.
    [[nodiscard]] virtual std::expected<void, std::string> disable() = 0;
};

} // namespace lumaro
