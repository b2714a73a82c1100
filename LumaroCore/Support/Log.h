// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string_view>

namespace lumaro {

enum class LogLevel : std::uint8_t { debug, info, error };

/// Where components say what they do: short lower-case messages under a category for each component. No message holds a
/// token, a code or what people wrote. Called from the thread of the component that speaks.
class Log {
public:
    Log() = default;
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;
    virtual ~Log() = default;

    virtual void write(LogLevel level, std::string_view category, std::string_view message) = 0;
};

} // namespace lumaro
