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
    tooManyBytes,
    damaged,  ///< it begins like a picture
    cutShort, ///< its end is missing
    empty,
    aFolder,
    notAFile,  ///< a pipe, a device
    notOpened, ///< gone, or not for this person to read
};

struct ImportRefusal {
    ImportFault fault = ImportFault::notAPicture;
    std::string detail = {}; ///< of one with too many pixels its size, "30000 × 20000"
};

/// What people are told; "%1" stands for the detail.
std::string_view textOf(ImportFault fault);

/// A picture as it may leave this computer: upright, in sRGB, its longest side at most 2048 pixels, at most
/// `BoardSpec::maxMediaBytes`, and without a word of where, when and by what it was taken.
struct ImportedPicture {
    std::string bytes;            ///< a PNG when something shines through, a JPEG otherwise
    double aspect = 1;            ///< width over height
    bool hasTransparency = false; ///< such a picture is a sticker without cutting
};

using PictureImport = std::expected<ImportedPicture, ImportRefusal>;

/// Larger files are refused unread.
constexpr std::int64_t largestPictureFile = std::int64_t{256} * 1024 * 1024;

/// Lets readers of this process hold a picture as large as `importPicture` takes. Once, before other threads read
/// pictures.
void allowLargePictures();

/// Takes a file of any usual picture format; of a moving one, its first frame. Takes up to some seconds; on any thread.
PictureImport importPicture(std::string_view file);
/// The same for a picture of the clipboard.
PictureImport importPicture(const QImage& picture);
/// The same for what lies at a path. Waits for the disk, never for a pipe or a device.
PictureImport importPictureFile(const std::string& path);

} // namespace lumaro
