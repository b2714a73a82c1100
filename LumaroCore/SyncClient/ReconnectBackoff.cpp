// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/SyncClient/ReconnectBackoff.h"

#include "LumaroCore/Support/Mutant.h"

#include <algorithm>
#include <cmath>

namespace lumaro {

Seconds ReconnectBackoff::delay(std::int64_t forAttempt) const {
    if (forAttempt < 1) return std::min(base, cap);
    const Seconds grown = base * std::pow(multiplier, static_cast<double>(forAttempt));
    if (mutant(Mutant::backoffNeverEnds)) return grown;
    return std::isfinite(grown.count()) ? std::min(grown, cap) : cap;
}

Seconds ReconnectBackoff::nextDelay() {
    return delay(attempt++);
}

std::vector<Seconds> ReconnectBackoff::schedule(std::int64_t count) const {
    std::vector<Seconds> delays(static_cast<std::size_t>(std::max(count, std::int64_t{0})));
    std::ranges::generate(delays, [next = *this]() mutable { return next.nextDelay(); });
    return delays;
}

} // namespace lumaro
