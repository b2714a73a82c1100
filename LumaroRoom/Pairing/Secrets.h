// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Pairing/RandomSource.h"
#include "LumaroRoom/Store/Records.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace lumaro {

/// So many characters of lower-case base 32 (RFC 4648 alphabet), 5 random bits each.
std::string randomText(RandomSource& random, std::size_t length);
/// Six digits, each combination as likely as any other.
std::string randomCode(RandomSource& random);
/// SHA-256 (FIPS 180-4).
std::array<std::uint8_t, 32> sha256(std::string_view bytes);

} // namespace lumaro
