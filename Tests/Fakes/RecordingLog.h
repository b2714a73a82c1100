// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Log.h"

#include <string>
#include <vector>

namespace lumaro {

/// Keeps what was said, as "category: message".
class RecordingLog final : public Log {
public:
    void write(LogLevel, std::string_view category, std::string_view message) override {
        lines.push_back(std::string{category} + ": " + std::string{message});
    }

    std::vector<std::string> lines;
};

} // namespace lumaro
