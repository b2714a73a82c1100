// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Op.h"

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace lumaro::samples {

using Random = std::mt19937_64;

/// 2026-05-01 12:00 UTC, which every sample takes for now.
inline constexpr Instant noon{std::chrono::seconds{1777636800}};

/// A whole number from `low` to `high`, both included.
template <class T>
T pick(Random& random, T low, T high) {
    return std::uniform_int_distribution<T>{low, high}(random);
}

inline bool chance(Random& random, double probability) {
    return std::bernoulli_distribution{probability}(random);
}

/// An id made of a small number, so that random ops often concern the same item.
UUID numberedId(std::uint64_t number);

/// A note of one line.
Payload plainNote(std::string text);

/// A valid item of any kind with any of its fields set.
BoardItem anyItem(Random& random, const UUID& id);

/// A board of so many valid items, under the ids 1 to `count`.
Board anyBoard(Random& random, std::size_t count);

/// Any op, about one of the ids 1 to `ids`; now and then one that the rules refuse.
Op anyOp(Random& random, std::uint64_t ids);

/// 30 items as a couple may have them, about 15 KB of JSON.
Board typicalBoard();
/// 60 notes and doodles, each close to the largest item there may be: about 1.9 MB of JSON.
Board heavyBoard();
/// 60 small items.
Board fullBoard();

} // namespace lumaro::samples
