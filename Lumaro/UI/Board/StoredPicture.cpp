// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/StoredPicture.h"

#include <QtCore/QBuffer>
#include <QtGui/QImageReader>

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

/// Ours have 4; a file of two megabytes may say that it has any number.
constexpr qint64 mostStoredPixels = qint64{32} * 1024 * 1024;

} // namespace

QImage readStored(QImageReader& reader, int side) {
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (qint64{size.width()} * size.height() > mostStoredPixels) return {};
    if (size.isValid() && std::max(size.width(), size.height()) > side) {
        reader.setScaledSize(size.scaled(side, side, Qt::KeepAspectRatio).expandedTo({1, 1}));
    }
    auto image = reader.read();
    if (image.isNull()) return image;
    return std::move(image).convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                                    : QImage::Format_RGB32);
}

QImage readStored(std::string_view bytes, int side) {
    auto held = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QBuffer buffer{&held};
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader{&buffer};
    return readStored(reader, side);
}

} // namespace lumaro
