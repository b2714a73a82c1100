// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Pairing/RandomSource.h"
#include "Platform/Posix/SystemRandom.h"

namespace lumaro {

/// The system's own randomness.
class SystemRandomSource final : public RandomSource {
public:
    void fill(std::span<std::uint8_t> bytes) override { fillWithSystemRandom(bytes); }
};

} // namespace lumaro
