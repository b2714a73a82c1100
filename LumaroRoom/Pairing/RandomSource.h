// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

namespace lumaro {

/// Bytes that nobody can guess.
class RandomSource {
public:
    RandomSource() = default;
    RandomSource(const RandomSource&) = delete;
    RandomSource& operator=(const RandomSource&) = delete;
    virtual ~RandomSource() = default;

    virtual void fill(std::span<std::uint8_t> bytes) = 0;
};

} // namespace lumaro
