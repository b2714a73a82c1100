// SPDX-License-Identifier: Apache-2.0
#include "Platform/Posix/SystemRandom.h"

#include "LumaroCore/Support/Fatal.h"

#include <sys/random.h>

#include <algorithm>
#include <cstddef>

namespace lumaro {

void fillWithSystemRandom(std::span<std::uint8_t> bytes) {
    constexpr std::size_t atOnce = 256; // more is refused
    while (!bytes.empty()) {
        const auto part = bytes.first(std::min(bytes.size(), atOnce));
        // This fails on no system that has the call.
        if (::getentropy(part.data(), part.size()) != 0) fatal("the system gives no random numbers");
        bytes = bytes.subspan(part.size());
    }
}

UUID SystemRandom::next() {
    UUID id;
    fillWithSystemRandom(id.bytes);
    id.bytes[6] = static_cast<std::uint8_t>((id.bytes[6] & 0x0FU) | 0x40U);
    id.bytes[8] = static_cast<std::uint8_t>((id.bytes[8] & 0x3FU) | 0x80U);
    return id;
}

} // namespace lumaro
