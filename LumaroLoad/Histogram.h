// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>

namespace lumaro {

/// Counts spans of time in buckets that grow with the span: any quantile is exact to 1 part in 128, whatever was
/// recorded, and recording costs no memory.
class Histogram {
public:
    using Span = std::chrono::nanoseconds;

    /// A span below zero counts as zero.
    void record(Span span);
    void add(const Histogram& other);

    std::uint64_t count() const { return count_; }
    Span max() const { return max_; }
    /// The smallest bucket's end that at least this share of the spans lies below; zero when nothing was recorded.
    Span quantile(double share) const;

private:
    // Spans below 2 * `perDoubling` ns have a bucket each; above, every doubling is cut into `perDoubling` buckets.
    static constexpr std::size_t perDoubling = 128;
    static constexpr std::size_t bucketCount = (64 - 7) * perDoubling;
    static std::size_t bucketOf(std::uint64_t nanoseconds);
    static std::uint64_t endOf(std::size_t bucket);

    std::array<std::uint64_t, bucketCount> buckets_{};
    std::uint64_t count_ = 0;
    Span max_{0};
};

} // namespace lumaro
