// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// The settings of this person on this computer, by key. A key keeps one kind of value.
///
/// A value counts from the call that sets it. It is stored at once; when the disk fails, that is logged and the value
/// lasts as long as the program. Used on the main thread.
class UserDefaults {
public:
    UserDefaults() = default;
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;
    virtual ~UserDefaults() = default;

    /// None when the key has no value.
    virtual std::optional<std::string> string(std::string_view key) const = 0;
    virtual std::optional<bool> boolean(std::string_view key) const = 0;

    virtual void setString(std::string_view key, std::string_view value) = 0;
    virtual void setBoolean(std::string_view key, bool value) = 0;
    /// The key has no value afterwards.
    virtual void remove(std::string_view key) = 0;
};

} // namespace lumaro
