// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <chrono>

namespace lumaro {

/// A rate that may be exceeded for a while: tokens come at a steady pace, up to a full bucket, and may be owed.
class TokenBucket {
public:
    using Clock = std::chrono::steady_clock;

    TokenBucket(double perSecond, double burst, Clock::time_point now)
        : perSecond_(perSecond), burst_(burst), tokens_(burst), filledAt_(now) {}

    /// Takes a token; answers with the time until it has come, zero when it is there.
    Clock::duration take(Clock::time_point now) {
        const std::chrono::duration<double> since = now - filledAt_;
        tokens_ = std::min(burst_, tokens_ + since.count() * perSecond_) - 1;
        filledAt_ = now;
        if (tokens_ >= 0) return {};
        return std::chrono::ceil<Clock::duration>(std::chrono::duration<double>{-tokens_ / perSecond_});
    }

private:
    double perSecond_;
    double burst_;
    double tokens_;
    Clock::time_point filledAt_;
};

} // namespace lumaro
