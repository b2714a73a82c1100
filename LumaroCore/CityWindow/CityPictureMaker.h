// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/UUID.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// A city as it may be kept and shown: a JPEG made by this program.
struct CityPicture {
    static constexpr std::size_t maxBytes = std::size_t{1024} * 1024;

    UUID id; ///< made from the bytes alone
    std::string jpeg;
};

/// Makes pictures of cities anew from what a page drew. What is no PNG of that size, or all of one colour, gives none.
/// May take some 100 ms: called in the background, from any thread.
class CityPictureMaker {
public:
    CityPictureMaker() = default;
    CityPictureMaker(const CityPictureMaker&) = delete;
    CityPictureMaker& operator=(const CityPictureMaker&) = delete;
    virtual ~CityPictureMaker() = default;

    /// `width` and `height` are what was asked for, in pixels.
    virtual std::optional<CityPicture> ofPicture(std::string_view png, std::int64_t width, std::int64_t height) = 0;
};

} // namespace lumaro
