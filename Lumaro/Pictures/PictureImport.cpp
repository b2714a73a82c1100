// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Pictures/PictureImport.h"

#include "LumaroCore/BoardModel/BoardSpec.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>
#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace lumaro {
namespace {

constexpr int longestSide = 2048;
// A JPEG is read at the size that is wanted; of all else, every pixel must find room in memory.
constexpr qint64 maxJpegPixels = 160'000'000;
constexpr qint64 maxPixels = 60'000'000;
// What people have. The formats that hardly anybody uses have the readers that hardly anybody tries, and a drawing that
// is a program, such as SVG, may draw in other files of this computer.
const std::array<QByteArray, 10> formats{"jpeg", "png", "webp", "gif", "bmp", "tiff", "heic", "heif", "avif", "ico"};
constexpr std::array jpegQualities{88, 80, 70, 60};

QSize shrunk(QSize size) {
    if (std::max(size.width(), size.height()) <= longestSide) return size;
    return size.scaled(longestSide, longestSide, Qt::KeepAspectRatio).expandedTo({1, 1});
}

// The profile stays behind, so the numbers must be those of the colours that everybody assumes.
void usualColours(QImage& picture) {
    if (picture.colorSpace().isValid()) picture.convertToColorSpace(QColorSpace::SRgb);
}

// What the reader would do by itself, but that an image which it turns loses its profile.
QImage upright(const QImage& picture, QImageIOHandler::Transformations turn) {
    const QImage turned = picture.mirrored(turn.testFlag(QImageIOHandler::TransformationMirror),
                                           turn.testFlag(QImageIOHandler::TransformationFlip));
    return turn.testFlag(QImageIOHandler::TransformationRotate90) ? turned.transformed(QTransform{}.rotate(90))
                                                                  : turned;
}

bool shinesThrough(const QImage& picture) {
    if (!picture.hasAlphaChannel()) return false;
    const QImage alpha = picture.convertToFormat(QImage::Format_Alpha8);
    for (int y = 0; y < alpha.height(); ++y) {
        const auto* row = alpha.constScanLine(y);
        if (std::any_of(row, row + alpha.width(), [](uchar value) { return value != 255; })) return true;
    }
    return false;
}

// The pixels alone. Texts, resolution and colour profile are the image's own and would be written with it.
QImage bare(const QImage& picture, QSize size, bool hasTransparency) {
    QImage pixels = hasTransparency ? picture.convertToFormat(QImage::Format_ARGB32_Premultiplied) : picture;
    if (pixels.size() != size) pixels = pixels.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QImage fresh{size, hasTransparency ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32};
    fresh.fill(Qt::transparent);
    pixels.setDevicePixelRatio(1);
    QPainter{&fresh}.drawImage(0, 0, pixels);
    return fresh;
}

std::string encoded(const QImage& picture, const char* format, int quality) {
    QByteArray bytes;
    QBuffer buffer{&bytes};
    buffer.open(QIODevice::WriteOnly);
    return picture.save(&buffer, format, quality) ? bytes.toStdString() : std::string{};
}

std::string encodedAtSize(const QImage& picture, bool hasTransparency) {
    if (hasTransparency) return encoded(picture, "PNG", -1);
    std::string bytes;
    for (const int quality : jpegQualities) {
        bytes = encoded(picture, "JPEG", quality);
        if (bytes.size() <= BoardSpec::maxMediaBytes) break;
    }
    return bytes;
}

} // namespace

std::string_view textOf(ImportFault fault) {
    switch (fault) {
    case ImportFault::notAPicture: return "that couldn't go up — it isn't a picture we can read.";
    case ImportFault::tooManyPixels: return "that picture couldn't go up — it's far too big.";
    case ImportFault::damaged: return "that picture couldn't go up — something in it is broken.";
    }
    std::unreachable();
}

std::expected<ImportedPicture, ImportFault> importPicture(const QImage& picture) {
    if (picture.isNull()) return std::unexpected(ImportFault::notAPicture);
    QImage seen = picture;
    usualColours(seen);
    const bool hasTransparency = shinesThrough(seen);
    for (QSize size = shrunk(seen.size());; size = (QSizeF{size} * 0.8).toSize().expandedTo({1, 1})) {
        std::string bytes = encodedAtSize(bare(seen, size, hasTransparency), hasTransparency);
        if (bytes.empty()) return std::unexpected(ImportFault::damaged);
        if (bytes.size() > BoardSpec::maxMediaBytes) continue;
        return ImportedPicture{std::move(bytes), double(size.width()) / size.height(), hasTransparency};
    }
}

std::expected<ImportedPicture, ImportFault> importPicture(std::string_view file) {
    QByteArray bytes = QByteArray::fromRawData(file.data(), static_cast<qsizetype>(file.size()));
    QBuffer buffer{&bytes};
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader{&buffer};
    const QByteArray format = reader.format();
    if (std::ranges::find(formats, format) == formats.end()) return std::unexpected(ImportFault::notAPicture);
    const QSize size = reader.size();
    const bool isJpeg = format == "jpeg";
    if (qint64{size.width()} * size.height() > (isJpeg ? maxJpegPixels : maxPixels)) {
        return std::unexpected(ImportFault::tooManyPixels);
    }
    if (isJpeg && size.isValid()) reader.setScaledSize(shrunk(size));
    QImage picture = reader.read();
    if (picture.isNull()) return std::unexpected(ImportFault::damaged);
    usualColours(picture);
    return importPicture(upright(picture, reader.transformation()));
}

} // namespace lumaro
