// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Instant.h"
#include "LumaroCore/Support/JsonError.h"

#include <algorithm>
#include <cstdint>
#include <expected>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// The settings that everything on the wire shares, and its two verbs, `encode` and `decode`.
namespace Wire {

/// Written as "v".
inline constexpr std::int64_t protocolVersion = 1;

/// The farthest millisecond either way that an `Instant` holds.
inline constexpr std::int64_t maxMilliseconds = std::numeric_limits<std::int64_t>::max() / 1000;

/// Whole milliseconds since 1970, to the nearest, halves away from zero.
constexpr std::int64_t milliseconds(Instant instant) {
    const std::int64_t count = instant.time_since_epoch().count();
    const std::int64_t rest = count % 1000;
    const std::int64_t whole = count / 1000 + (rest >= 500 ? 1 : 0) - (rest <= -500 ? 1 : 0);
    return std::clamp(whole, -maxMilliseconds, maxMilliseconds);
}

/// The instant `count` milliseconds after 1970; none when an `Instant` cannot hold it.
constexpr std::optional<Instant> date(std::int64_t count) {
    if (count < -maxMilliseconds || count > maxMilliseconds) return std::nullopt;
    return Instant{Microseconds{count * 1000}};
}

/// The instant as it reads after a trip over the wire. Every instant that is compared with a peer's goes through this.
constexpr Instant truncatedToMilliseconds(Instant instant) {
    return Instant{Microseconds{milliseconds(instant) * 1000}};
}

/// The JSON text of a value. Thread-safe.
template <class T>
[[nodiscard]] std::expected<std::string, EncodeError> encode(const T& value);

/// Appends the JSON text of a value to `out`, which is left as it was when there is none.
/// `depth` counts the arrays and objects that will surround the text.
template <class T>
[[nodiscard]] std::expected<void, EncodeError> encodeTo(std::string& out, const T& value, int depth = 0);

/// Reads a value from a JSON text. Thread-safe.
template <class T>
[[nodiscard]] std::expected<T, DecodeError> decode(std::string_view text);

} // namespace Wire
} // namespace lumaro
