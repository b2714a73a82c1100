// SPDX-License-Identifier: Apache-2.0
#include "Platform/Posix/SystemClock.h"

namespace lumaro {

Instant SystemClock::now() {
    return std::chrono::floor<Microseconds>(std::chrono::system_clock::now());
}

} // namespace lumaro
