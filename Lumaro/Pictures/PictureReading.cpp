// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Pictures/PictureReading.h"

#include "Lumaro/Pictures/Module.h"
#include "Lumaro/Pictures/WholeFile.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>
#include <QPixelFormat>
#include <QTransform>

#include <algorithm>
#include <array>
#include <cmath>
#include <mutex>
#include <utility>

namespace lumaro {
namespace {

// What people have. The formats that hardly anybody uses have the readers that hardly anybody tries, and a drawing that
// is a program, such as SVG, may draw in other files of this computer.
const std::array<QByteArray, 7> formats{"jpeg", "png", "webp", "gif", "bmp", "tiff", "ico"};

QSize small(QSize size) {
    if (std::max(size.width(), size.height()) <= longestPictureSide) return size;
    return size.scaled(longestPictureSide, longestPictureSide, Qt::KeepAspectRatio).expandedTo({1, 1});
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

qint64 pixelsIn(QSize size) {
    return qint64{size.width()} * size.height();
}

// What the reader has to hold of a picture at once, in bytes. A JPEG in several passes is held as numbers of two bytes;
// in one pass it comes row by row, made smaller by 2, 4 or 8 as its blocks are decoded.
qint64 heldAtOnce(std::string_view file, const QImageReader& reader, QSize size) {
    const auto pixels = pixelsIn(size);
    if (const auto jpeg = jpegFrame(file)) {
        return jpeg->isProgressive ? std::llround(static_cast<double>(pixels) * jpeg->samplesPerPixel * 2) : 0;
    }
    if (isPngByRows(file)) return 0;
    // Readers of a broken file may name a format that there is not.
    const auto format = reader.imageFormat();
    const bool isKnown = format > QImage::Format_Invalid && format < QImage::NImageFormats;
    const int bits = isKnown ? QImage::toPixelFormat(format).bitsPerPixel() : 32;
    return pixels * std::max(bits, 8) / 8;
}

// Without the module they are in no format that is read.
std::expected<QImage, ImportRefusal> readHeif(std::string_view file) {
    static auto* const read = reinterpret_cast<ReadHeif*>(functionOfModule("lumaro-heif", readHeifName));
    std::expected<QImage, ImportRefusal> picture = std::unexpected(ImportRefusal{ImportFault::notAPicture});
    if (read != nullptr) read(file, picture);
    return picture;
}

} // namespace

// One limit for all readers of the program; those for smaller pictures have their own below it.
void allowLargePictures() {
    static std::once_flag once;
    std::call_once(once, [] { QImageReader::setAllocationLimit(static_cast<int>(mostDecodedBytes / 1024 / 1024)); });
}

QImage madeSmall(QImage picture) {
    const QSize size = small(picture.size());
    if (picture.size() != size) {
        // In place, where the scaling would make a second picture of the full size.
        if (picture.hasAlphaChannel() && picture.depth() == 32) {
            picture.convertTo(QImage::Format_ARGB32_Premultiplied);
        } else if (picture.hasAlphaChannel() && picture.depth() == 64) {
            picture.convertTo(QImage::Format_RGBA64_Premultiplied);
        }
        picture = picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    usualColours(picture);
    return picture;
}

std::expected<QImage, ImportRefusal> readPicture(std::string_view file) {
    if (file.empty()) return std::unexpected(ImportRefusal{ImportFault::empty});
    if (isHeif(file)) {
        if (!isWhole(file)) return std::unexpected(ImportRefusal{ImportFault::cutShort});
        auto picture = readHeif(file);
        if (!picture) return picture;
        return madeSmall(std::move(*picture));
    }
    allowLargePictures();
    QByteArray bytes = QByteArray::fromRawData(file.data(), static_cast<qsizetype>(file.size()));
    QBuffer buffer{&bytes};
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader{&buffer};
    if (std::ranges::find(formats, reader.format()) == formats.end()) {
        return std::unexpected(ImportRefusal{ImportFault::notAPicture});
    }
    if (!isWhole(file)) return std::unexpected(ImportRefusal{ImportFault::cutShort});
    const QSize size = reader.size();
    if (pixelsIn(size) > mostPixels || heldAtOnce(file, reader, size) > mostDecodedBytes) {
        return std::unexpected(tooLarge(size));
    }
    const bool isMadeSmallerByReader = jpegFrame(file).has_value() || isPngByRows(file);
    if (isMadeSmallerByReader && size.isValid() && small(size) != size) reader.setScaledSize(small(size));
    QImage picture = reader.read();
    if (picture.isNull()) return std::unexpected(ImportRefusal{ImportFault::damaged});
    return upright(madeSmall(std::move(picture)), reader.transformation());
}

} // namespace lumaro
