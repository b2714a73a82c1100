// SPDX-License-Identifier: Apache-2.0
#include "Platform/Posix/SystemRandom.h"

#include "LumaroCore/Support/Fatal.h"

#include <sys/random.h>

namespace lumaro {

UUID SystemRandom::next() {
    UUID id;
    // So few bytes come whole, and fail on no system that has the call.
    if (::getentropy(id.bytes.data(), id.bytes.size()) != 0) fatal("the system gives no random numbers");
    id.bytes[6] = static_cast<std::uint8_t>((id.bytes[6] & 0x0FU) | 0x40U);
    id.bytes[8] = static_cast<std::uint8_t>((id.bytes[8] & 0x3FU) | 0x80U);
    return id;
}

} // namespace lumaro
