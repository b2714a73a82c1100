// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/UUID.h"

#include <cstddef>
#include <expected>
#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// A cover as it may be shown and sent: a JPEG, its longest side 512 pixels or less.
struct Cover {
    static constexpr std::size_t maxBytes = std::size_t{128} * 1024;

    UUID id; ///< made from the bytes alone, so that one cover has one id everywhere
    std::string jpeg;
};

/// Makes covers of pictures that strangers chose. What is no picture, or a dangerous one, gives none. May take some
/// 50 ms: called in the background, from any thread.
class CoverMaker {
public:
    /// A picture is read up to this size.
    static constexpr std::size_t maxPictureBytes = std::size_t{8} * 1024 * 1024;

    CoverMaker() = default;
    CoverMaker(const CoverMaker&) = delete;
    CoverMaker& operator=(const CoverMaker&) = delete;
    virtual ~CoverMaker() = default;

    /// Of a picture's file as bytes: JPEG, PNG, WebP, GIF or BMP.
    virtual std::optional<Cover> ofPicture(std::string_view bytes) = 0;
    /// Of a picture on this computer: a "file:" URL of a plain file, or a "data:" URL.
    virtual std::optional<Cover> ofLocalUrl(const std::string& url) = 0;
    /// A name-based UUID (version 5) of any text, always the same for the same text.
    virtual UUID idOf(std::string_view text) = 0;
};

} // namespace lumaro
