// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace lumaro {

/// What can be seen from a window of a place.
struct Scenery {
    std::uint64_t seed = 0;   ///< the same for one town, always
    std::uint32_t people = 0; ///< 0 where it is not known
    bool isByTheSea = false;
    int hills = 0; ///< 0 for a plain to 3 for mountains

    bool operator==(const Scenery&) const = default;
};

} // namespace lumaro
