// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/UserDefaults.h"

#include <functional>
#include <map>
#include <variant>

namespace lumaro {

/// Settings in memory.
class MemoryDefaults final : public UserDefaults {
public:
    std::optional<std::string> string(std::string_view key) const override { return valueOf<std::string>(key); }
    std::optional<bool> boolean(std::string_view key) const override { return valueOf<bool>(key); }

    void setString(std::string_view key, std::string_view value) override {
        values.insert_or_assign(std::string{key}, std::string{value});
    }
    void setBoolean(std::string_view key, bool value) override { values.insert_or_assign(std::string{key}, value); }
    void remove(std::string_view key) override {
        if (const auto found = values.find(key); found != values.end()) values.erase(found);
    }

    std::map<std::string, std::variant<std::string, bool>, std::less<>> values;

private:
    template <class T>
    std::optional<T> valueOf(std::string_view key) const {
        const auto found = values.find(key);
        if (found == values.end()) return std::nullopt;
        const auto* value = std::get_if<T>(&found->second);
        return value == nullptr ? std::nullopt : std::optional{*value};
    }
};

} // namespace lumaro
