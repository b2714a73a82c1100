// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace lumaro {

/// Whether the file's last byte can be there. Readers draw what they have of a file that was cut off, and say nothing;
/// so this follows the parts of the file to where its own lengths and end marks say that it ends (of a moving GIF, its
/// first picture). True for formats whose readers notice. Pure; reads no further than the file.
///
/// JPEG: ISO 10918-1 B.1; PNG: its chunks; GIF: GIF89a; WebP: its RIFF length; BMP: rows by the header; HEIF: ISO
/// 14496-12.
bool isWhole(std::string_view file);

/// What a JPEG says of itself before its pixels.
struct JpegFrame {
    int width = 0;
    int height = 0;
    /// It comes in several passes, so all of it must be held before a row is known.
    bool isProgressive = false;
    /// Numbers that are held for each pixel, all channels together: 3 without subsampling, 1.5 as cameras write.
    double samplesPerPixel = 3;
};
std::optional<JpegFrame> jpegFrame(std::string_view file);

/// A PNG whose rows can be read and made smaller one by one: eight bits for each of three or four channels, not
/// interlaced.
bool isPngByRows(std::string_view file);

/// ISO 23008-12 by its brands: HEIC as phones write it, AVIF, and the sequences of both.
bool isHeif(std::string_view file);

} // namespace lumaro
