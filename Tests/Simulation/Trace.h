// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Tests/Fakes/ManualSleeper.h"

#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

namespace lumaro::simulation {

/// Everything that happens in a run, folded into one number: two runs with the same one went the same way. Prints it
/// as it happens when it is told to.
class Trace {
public:
    Trace(const ManualSleeper& time, bool isPrinted) : time_(time), isPrinted_(isPrinted) {}

    void add(std::string_view what, std::uint64_t who, std::string_view text = {}) {
        mix(static_cast<std::uint64_t>(time_.now().count()));
        mix(std::hash<std::string_view>{}(what));
        mix(who);
        mix(std::hash<std::string_view>{}(text));
        if (isPrinted_) print(what, who, text);
    }
    std::uint64_t hash() const { return state_; }

private:
    void mix(std::uint64_t value) {
        state_ = (state_ ^ value) * 0x9e3779b97f4a7c15ULL;
        state_ = (state_ << 27) | (state_ >> 37);
    }
    void print(std::string_view what, std::uint64_t who, std::string_view text) const {
        constexpr std::size_t widest = 140;
        text = text.substr(0, widest);
        const auto line = std::string{what} + " " + std::to_string(who) + "  " + std::string{text};
        std::printf("%14.6f  %s\n", Seconds{time_.now()}.count(), line.c_str());
    }

    const ManualSleeper& time_;
    bool isPrinted_;
    std::uint64_t state_ = 0;
};

} // namespace lumaro::simulation
