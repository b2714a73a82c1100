// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace lumaro {

/// Plays the sounds that a system has names for. Used on the main thread, which it never holds up.
class SoundPlayer {
public:
    SoundPlayer() = default;
    SoundPlayer(const SoundPlayer&) = delete;
    SoundPlayer& operator=(const SoundPlayer&) = delete;
    virtual ~SoundPlayer() = default;

    /// Plays it once, such as "Glass"; does nothing where there is no such sound, or nothing to play it.
    virtual void play(std::string_view name) = 0;
};

} // namespace lumaro
