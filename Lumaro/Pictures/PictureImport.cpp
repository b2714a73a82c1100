// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Pictures/PictureImport.h"

#include "Lumaro/Pictures/PictureReading.h"
#include "LumaroCore/BoardModel/BoardSpec.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace lumaro {
namespace {

constexpr std::array jpegQualities{88, 80, 70, 60};

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
    case ImportFault::notAPicture:
        return "that couldn't go up — it isn't a picture we can read. save it as a jpeg and try again.";
    case ImportFault::tooManyPixels: return "that picture is too large — %1 pixels. save it smaller, and it can go up.";
    case ImportFault::tooManyBytes: return "that picture couldn't go up — the file is far too big.";
    case ImportFault::damaged: return "that picture couldn't go up — something in it is broken.";
    case ImportFault::cutShort: return "that picture couldn't go up — its end is missing. was it still on its way?";
    case ImportFault::empty: return "that couldn't go up — there is nothing in the file.";
    case ImportFault::aFolder: return "that's a folder — drop the pictures that are in it.";
    case ImportFault::notAFile: return "that couldn't go up — it isn't a file.";
    case ImportFault::notOpened: return "that couldn't go up — the file can't be opened.";
    }
    std::unreachable();
}

PictureImport importPicture(const QImage& picture) {
    if (picture.isNull()) return std::unexpected(ImportRefusal{ImportFault::notAPicture});
    const QImage seen = madeSmall(picture);
    const bool hasTransparency = shinesThrough(seen);
    for (QSize size = seen.size();; size = (QSizeF{size} * 0.8).toSize().expandedTo({1, 1})) {
        std::string bytes = encodedAtSize(bare(seen, size, hasTransparency), hasTransparency);
        if (bytes.empty()) return std::unexpected(ImportRefusal{ImportFault::damaged});
        if (bytes.size() > BoardSpec::maxMediaBytes) continue;
        return ImportedPicture{std::move(bytes), double(size.width()) / size.height(), hasTransparency};
    }
}

PictureImport importPicture(std::string_view file) {
    if (std::cmp_greater(file.size(), largestPictureFile)) {
        return std::unexpected(ImportRefusal{ImportFault::tooManyBytes});
    }
    const auto picture = readPicture(file);
    if (!picture) return std::unexpected(picture.error());
    return importPicture(*picture);
}

PictureImport importPictureFile(const std::string& path) {
    // A pipe or a device would keep the reader waiting, or never end.
    const QFileInfo info{QString::fromStdString(path)};
    if (info.isDir()) return std::unexpected(ImportRefusal{ImportFault::aFolder});
    if (!info.exists()) return std::unexpected(ImportRefusal{ImportFault::notOpened});
    if (!info.isFile()) return std::unexpected(ImportRefusal{ImportFault::notAFile});
    if (info.size() > largestPictureFile) return std::unexpected(ImportRefusal{ImportFault::tooManyBytes});
    QFile file{info.filePath()};
    if (!file.open(QIODevice::ReadOnly)) return std::unexpected(ImportRefusal{ImportFault::notOpened});
    const QByteArray bytes = file.read(largestPictureFile);
    if (file.error() != QFileDevice::NoError) return std::unexpected(ImportRefusal{ImportFault::notOpened});
    return importPicture({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

} // namespace lumaro
