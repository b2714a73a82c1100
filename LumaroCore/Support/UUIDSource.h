// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/UUID.h"

namespace lumaro {

/// Where fresh identifiers come from.
class UUIDSource {
public:
    UUIDSource() = default;
    UUIDSource(const UUIDSource&) = delete;
    UUIDSource& operator=(const UUIDSource&) = delete;
    virtual ~UUIDSource() = default;

    /// An id that nobody has used before.
    virtual UUID next() = 0;
};

} // namespace lumaro
