// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/SystemRandomSource.h"

#include "LumaroCore/Support/Fatal.h"

#include <sys/random.h>

#include <algorithm>
#include <cstddef>

namespace lumaro {

void SystemRandomSource::fill(std::span<std::uint8_t> bytes) {
    constexpr std::size_t atOnce = 256; // more is refused
    while (!bytes.empty()) {
        const auto part = bytes.first(std::min(bytes.size(), atOnce));
        if (::getentropy(part.data(), part.size()) != 0) fatal("the system gives no random numbers");
        bytes = bytes.subspan(part.size());
    }
}

} // namespace lumaro
