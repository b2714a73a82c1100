// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/UUIDSource.h"

namespace lumaro {

/// Random ids (RFC 4122, version 4) of the system's own randomness, good enough for ids that nobody may guess.
class SystemRandom final : public UUIDSource {
public:
    UUID next() override;
};

} // namespace lumaro
