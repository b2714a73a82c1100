// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>

namespace lumaro {

/// The table of the world's towns (docs/places.md) as it lies in the program's file: read only, there while the program
/// runs, and in memory only where it has been read.
std::span<const std::byte> placesData();

} // namespace lumaro
