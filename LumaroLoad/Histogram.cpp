// SPDX-License-Identifier: Apache-2.0
#include "LumaroLoad/Histogram.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace lumaro {

std::size_t Histogram::bucketOf(std::uint64_t nanoseconds) {
    const int shift =
        std::max(0, static_cast<int>(std::bit_width(nanoseconds)) - static_cast<int>(std::bit_width(perDoubling)));
    return static_cast<std::size_t>(shift) * perDoubling + static_cast<std::size_t>(nanoseconds >> shift);
}

std::uint64_t Histogram::endOf(std::size_t bucket) {
    if (bucket < 2 * perDoubling) return bucket;
    const std::size_t shift = bucket / perDoubling - 1;
    const std::uint64_t mantissa = bucket - shift * perDoubling;
    return ((mantissa + 1) << shift) - 1;
}

void Histogram::record(Span span) {
    const Span counted = std::max(span, Span{0});
    ++buckets_.at(bucketOf(static_cast<std::uint64_t>(counted.count())));
    ++count_;
    max_ = std::max(max_, counted);
}

void Histogram::add(const Histogram& other) {
    for (std::size_t i = 0; i < bucketCount; ++i) buckets_.at(i) += other.buckets_.at(i);
    count_ += other.count_;
    max_ = std::max(max_, other.max_);
}

Histogram::Span Histogram::quantile(double share) const {
    const auto wanted = static_cast<std::uint64_t>(std::ceil(share * static_cast<double>(count_)));
    std::uint64_t below = 0;
    for (std::size_t i = 0; i < bucketCount && count_ > 0; ++i) {
        below += buckets_.at(i);
        if (below >= std::max<std::uint64_t>(wanted, 1)) return std::min(Span{endOf(i)}, max_);
    }
    return max_;
}

} // namespace lumaro
