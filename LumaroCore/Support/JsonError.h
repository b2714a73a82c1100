// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace lumaro {

/// What is wrong with a JSON text that was read.
enum class DecodeFault : std::uint8_t {
    malformed,       ///< not JSON
    invalidUtf8,     ///< the text is not UTF-8
    trailingContent, ///< something follows the value
    tooDeep,         ///< nested over `maxJsonDepth`
    tooLarge,        ///< a text over 4 GiB, or no memory to read it
    missingKey,
    duplicateKey,
    wrongType,
    outOfRange,   ///< a number that its type cannot hold
    invalidValue, ///< the right JSON type, but no value of ours
};

/// The first thing wrong with a text, and where.
struct DecodeError {
    DecodeFault fault = DecodeFault::malformed;
    std::string path; ///< from the root: `$.items[3].center.x`
    std::string message;

    bool operator==(const DecodeError&) const = default;
};

/// Why a value has no JSON text.
enum class EncodeFault : std::uint8_t {
    notFinite,   ///< a NaN or an infinity
    invalidUtf8, ///< a string that is not UTF-8
    tooDeep,     ///< nested over `maxJsonDepth`
};

struct EncodeError {
    EncodeFault fault = EncodeFault::notFinite;
    std::string key; ///< the key under or before which it was found; empty when that is not known

    bool operator==(const EncodeError&) const = default;
};

/// Arrays and objects within one another, in every text that is read or written.
inline constexpr int maxJsonDepth = 1000;

} // namespace lumaro
