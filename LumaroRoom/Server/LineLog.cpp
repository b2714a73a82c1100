// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/LineLog.h"

#include "LumaroCore/Support/OneLine.h"

#include <unistd.h>

#include <array>
#include <cstdio>
#include <ctime>
#include <string>

namespace lumaro {
namespace {

std::string_view textOf(LogLevel level) {
    switch (level) {
    case LogLevel::debug: return "debug";
    case LogLevel::info: return "info";
    case LogLevel::error: return "error";
    }
    return "";
}

std::string timeText(Instant instant) {
    const auto second = std::chrono::floor<std::chrono::seconds>(instant);
    const auto millisecond = std::chrono::floor<std::chrono::milliseconds>(instant - second).count();
    const std::time_t time = second.time_since_epoch().count();
    std::tm parts{};
    static_cast<void>(::gmtime_r(&time, &parts));
    std::array<char, 32> text{};
    const auto size = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &parts);
    const auto rest = std::snprintf(text.data() + size, text.size() - size, ".%03dZ", static_cast<int>(millisecond));
    return {text.data(), size + static_cast<std::size_t>(rest)};
}

} // namespace

void LineLog::write(LogLevel level, std::string_view category, std::string_view message) {
    if (level < least_) return;
    std::string line = "time=" + timeText(clock_.now());
    line.append(" level=").append(textOf(level)).append(" part=").append(category).append(" event=\"");
    // A message may quote a peer: it stays one value.
    for (const char c : onOneLine(message)) {
        if (c == '"' || c == '\\') line.push_back('\\');
        line.push_back(c);
    }
    line.append("\"\n");
    // There is nowhere to tell that the log cannot be written.
    static_cast<void>(::write(STDERR_FILENO, line.data(), line.size()) == 0);
}

} // namespace lumaro
