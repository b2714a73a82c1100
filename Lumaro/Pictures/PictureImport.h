// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QImage>

#include <cstdint>
#include <expected>
#include <string>
#include <string_view>

namespace lumaro {

/// Why something that was pasted or dropped does not become a picture of the board.
enum class ImportFault : std::uint8_t {
    notAPicture, ///< in no format that we read
    tooManyPixels,
    damaged, ///< it begins like a picture
};

/// What people are told.
std::string_view textOf(ImportFault fault);

/// A picture as it may leave this computer: upright, in sRGB, its longest side at most 2048 pixels, at most
/// `BoardSpec::maxMediaBytes`, and without a word of where, when and by what it was taken.
struct ImportedPicture {
    std::string bytes;            ///< a PNG when something shines through, a JPEG otherwise
    double aspect = 1;            ///< width over height
    bool hasTransparency = false; ///< such a picture is a sticker without cutting
};

/// Takes a file of any usual picture format; of a moving one, its first frame. Takes up to a second; on any thread.
std::expected<ImportedPicture, ImportFault> importPicture(std::string_view file);
/// The same for a picture of the clipboard.
std::expected<ImportedPicture, ImportFault> importPicture(const QImage& picture);

} // namespace lumaro
