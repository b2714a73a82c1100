// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Board/ExpiryWatch.h"

#include <algorithm>
#include <chrono>

namespace lumaro {
namespace {

constexpr Seconds expiryPause{0.25};
// The clock may be set while one waits: look at it again at times.
constexpr Seconds longestExpiryWait{60};

} // namespace

void ExpiryWatch::watch(const Board& board) {
    next_.reset();
    for (const auto& item : board.items) {
        const auto* const note = item.payload.as<NotePayload>();
        if (note != nullptr && note->expiresAt && (!next_ || *note->expiresAt < *next_)) next_ = note->expiresAt;
    }
    scheduleExpiry(left());
}

void ExpiryWatch::stop() {
    next_.reset();
    scheduleExpiry(std::nullopt);
}

std::optional<Seconds> ExpiryWatch::left() const {
    if (!next_) return std::nullopt;
    return std::max(std::chrono::duration_cast<Seconds>(*next_ - clock_.now()), Seconds{0});
}

void ExpiryWatch::scheduleExpiry(std::optional<Seconds> after) {
    expiryTask_.reset();
    if (!after) return;
    if (*after > longestExpiryWait) {
        expiryTask_ = sleeper_.wait(longestExpiryWait, [this] { scheduleExpiry(left()); });
    } else {
        expiryTask_ = sleeper_.wait(*after, [this] { expiryTask_ = sleeper_.wait(expiryPause, expired_); });
    }
}

} // namespace lumaro
