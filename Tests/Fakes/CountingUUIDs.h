// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/UUIDSource.h"

#include <cstddef>
#include <cstdint>

namespace lumaro {

/// Ids that count up from the one after `start`, their last bytes the number.
class CountingUUIDs final : public UUIDSource {
public:
    explicit CountingUUIDs(std::uint64_t start = 0) : count_(start) {}

    UUID next() override {
        ++count_;
        UUID id;
        for (std::size_t i = 0; i < 8; ++i) id.bytes[15 - i] = static_cast<std::uint8_t>(count_ >> (8 * i));
        return id;
    }

private:
    std::uint64_t count_;
};

} // namespace lumaro
