// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <utility>

namespace lumaro {

/// How bright the room is around the board: by day, or by lamplight.
enum class Appearance : std::uint8_t { light, dark };

/// The light in which this thread paints, as long as it lives; by day without one. Papers and the tints of cards are
/// what that light makes of them.
class InLight {
public:
    explicit InLight(Appearance light) : before_(std::exchange(current(), light)) {}
    InLight(const InLight&) = delete;
    InLight& operator=(const InLight&) = delete;
    ~InLight() { current() = before_; }

    static bool isLamp() { return current() == Appearance::dark; }

private:
    static Appearance& current() {
        thread_local Appearance light = Appearance::light;
        return light;
    }

    Appearance before_;
};

} // namespace lumaro
