// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace lumaro {

/// Numbers that look like chance and are the same on every computer for the same seed.
class Chance {
public:
    explicit constexpr Chance(std::uint64_t seed) : state_{seed} {}
    /// Of one thing among those of a seed: a layer, a house.
    constexpr Chance(std::uint64_t seed, std::uint64_t thing) : state_{mixed(seed ^ mixed(thing + 1))} {}

    /// 0 to 1, without 1.
    constexpr double part() { return static_cast<double>(next() >> 11) * 0x1p-53; }
    constexpr double between(double low, double high) { return low + (high - low) * part(); }
    constexpr bool happens(double probability) { return part() < probability; }
    /// 0 to `count`, without `count`.
    constexpr int below(int count) { return static_cast<int>(part() * count); }
    constexpr std::uint64_t next() {
        state_ += 0x9E3779B97F4A7C15U;
        return mixed(state_);
    }

private:
    // The finalizer of SplitMix64.
    static constexpr std::uint64_t mixed(std::uint64_t z) {
        z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
        return z ^ (z >> 31U);
    }

    std::uint64_t state_;
};

} // namespace lumaro
