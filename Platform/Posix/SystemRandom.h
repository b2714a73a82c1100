// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/UUIDSource.h"

#include <cstdint>
#include <span>

namespace lumaro {

/// Fills the bytes with the system's own randomness, good enough for secrets. Thread-safe.
void fillWithSystemRandom(std::span<std::uint8_t> bytes);

/// Random ids (RFC 4122, version 4) that nobody can guess.
class SystemRandom final : public UUIDSource {
public:
    UUID next() override;
};

} // namespace lumaro
