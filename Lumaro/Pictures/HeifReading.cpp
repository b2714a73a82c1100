// SPDX-License-Identifier: Apache-2.0
// The module that reads HEIF files.
#include "Lumaro/Pictures/PictureReading.h"

#include <QColorSpace>

#include <libheif/heif.h>

#include <algorithm>
#include <memory>

namespace lumaro {
namespace {

using Context = std::unique_ptr<heif_context, decltype(&heif_context_free)>;
using Handle = std::unique_ptr<heif_image_handle, decltype(&heif_image_handle_release)>;
using Picture = std::unique_ptr<heif_image, decltype(&heif_image_release)>;

bool isFine(const heif_error& error) {
    return error.code == heif_error_Ok;
}

ImportRefusal refusalOf(const heif_error& error) {
    if (error.subcode == heif_suberror_End_of_data) return {ImportFault::cutShort};
    const bool isUnknown =
        error.code == heif_error_Unsupported_filetype || error.code == heif_error_Unsupported_feature;
    return {isUnknown ? ImportFault::notAPicture : ImportFault::damaged};
}

// ITU-T H.273 has the numbers: 12 are the primaries of Display P3, which phones use without a profile beside them.
QColorSpace coloursOf(const heif_image_handle* handle) {
    if (const auto size = heif_image_handle_get_raw_color_profile_size(handle); size > 0) {
        QByteArray profile{static_cast<qsizetype>(size), '\0'};
        if (isFine(heif_image_handle_get_raw_color_profile(handle, profile.data()))) {
            return QColorSpace::fromIccProfile(profile);
        }
    }
    heif_color_profile_nclx* numbers = nullptr;
    if (!isFine(heif_image_handle_get_nclx_color_profile(handle, &numbers)) || numbers == nullptr) return {};
    const bool isWide = numbers->color_primaries == heif_color_primaries_SMPTE_EG_432_1;
    heif_nclx_color_profile_free(numbers);
    return isWide ? QColorSpace{QColorSpace::DisplayP3} : QColorSpace{};
}

QImage pixelsOf(const heif_image* picture, bool hasAlpha) {
    int stride = 0;
    const auto* const rows = heif_image_get_plane_readonly(picture, heif_channel_interleaved, &stride);
    const int width = heif_image_get_width(picture, heif_channel_interleaved);
    const int height = heif_image_get_height(picture, heif_channel_interleaved);
    if (rows == nullptr || width <= 0 || height <= 0) return {};
    return QImage{rows, width, height, stride, hasAlpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888};
}

std::expected<QImage, ImportRefusal> readHeif(std::string_view file) {
    const Context context{heif_context_alloc(), heif_context_free};
    if (const auto read = heif_context_read_from_memory_without_copy(context.get(), file.data(), file.size(), nullptr);
        !isFine(read)) {
        return std::unexpected(refusalOf(read));
    }
    heif_image_handle* first = nullptr;
    if (const auto found = heif_context_get_primary_image_handle(context.get(), &first); !isFine(found)) {
        return std::unexpected(refusalOf(found));
    }
    const Handle handle{first, heif_image_handle_release};
    const QSize size{heif_image_handle_get_width(first), heif_image_handle_get_height(first)};
    if (qint64{size.width()} * size.height() * 4 > mostDecodedBytes) return std::unexpected(tooLarge(size));
    const bool hasAlpha = heif_image_handle_has_alpha_channel(first) != 0;
    heif_image* decoded = nullptr;
    const auto done = heif_decode_image(first, &decoded, heif_colorspace_RGB,
                                        hasAlpha ? heif_chroma_interleaved_RGBA : heif_chroma_interleaved_RGB, nullptr);
    if (!isFine(done)) return std::unexpected(refusalOf(done));
    const Picture picture{decoded, heif_image_release};
    const QImage seen = pixelsOf(decoded, hasAlpha);
    if (seen.isNull()) return std::unexpected(ImportRefusal{ImportFault::damaged});
    const QImage smaller =
        std::max(seen.width(), seen.height()) > longestPictureSide
            ? seen.scaled(longestPictureSide, longestPictureSide, Qt::KeepAspectRatio, Qt::SmoothTransformation)
            : seen.copy();
    QImage coloured = smaller;
    coloured.setColorSpace(coloursOf(first));
    return coloured;
}

} // namespace
} // namespace lumaro

// By the name in `lumaro::readHeifName`.
extern "C" Q_DECL_EXPORT void lumaro_read_heif_1(std::string_view file,
                                                 std::expected<QImage, lumaro::ImportRefusal>& read) {
    read = lumaro::readHeif(file);
}
