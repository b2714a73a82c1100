// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Pictures/PictureImport.h"

#include <QImage>

#include <expected>
#include <string>
#include <string_view>

namespace lumaro {

/// The longest side of a picture that leaves this computer.
constexpr int longestPictureSide = 2048;
/// The most that the pixels of one picture take while it is read, before it is made smaller; its reader may need as
/// much again. JPEGs, and PNGs of the usual kind, are made smaller while they are read and stay far below.
constexpr qint64 mostDecodedBytes = qint64{256} * 1024 * 1024;
/// No picture is read for longer than this many pixels take: some seconds on a slow computer.
constexpr qint64 mostPixels = qint64{256'000'000};

/// The picture in a file of any usual format, upright, in sRGB, no longer than `longestPictureSide`; of a moving one,
/// its first frame. On any thread.
std::expected<QImage, ImportRefusal> readPicture(std::string_view file);
/// The same for one that is decoded already.
QImage madeSmall(QImage picture);

inline ImportRefusal tooLarge(QSize size) {
    return {ImportFault::tooManyPixels, std::to_string(size.width()) + " × " + std::to_string(size.height())};
}

/// What the module that reads HEIF files gives: pixels as they hold them, HEIC and AVIF, whose turns are the file's own
/// and done. `file` is one of those. On any thread.
using ReadHeif = void(std::string_view file, std::expected<QImage, ImportRefusal>& read);
inline constexpr const char* readHeifName = "lumaro_read_heif_1";

} // namespace lumaro
