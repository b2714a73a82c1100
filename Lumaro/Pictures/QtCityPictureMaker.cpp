// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Pictures/QtCityPictureMaker.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QUuid>

#include <algorithm>
#include <array>

namespace lumaro {
namespace {

constexpr std::array cityQualities{88, 75, 60, 45};

// So that no id of a city is one of another picture's.
QUuid citySpace() {
    return QUuid{0x2f0c8b8e, 0x6d5a, 0x4c1b, 0x8a, 0x37, 0x95, 0xe4, 0x1d, 0x60, 0xb2, 0x48};
}

UUID cityId(const QByteArray& jpeg) {
    const auto hash = QCryptographicHash::hash(jpeg, QCryptographicHash::Sha256);
    const auto bytes = QUuid::createUuidV5(citySpace(), hash).toRfc4122();
    UUID id;
    std::ranges::copy(bytes, reinterpret_cast<char*>(id.bytes.data()));
    return id;
}

bool isOfOneColour(const QImage& picture) {
    const QRgb first = picture.pixel(0, 0);
    for (int y = 0; y < picture.height(); ++y) {
        const auto* const row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        if (std::any_of(row, row + picture.width(), [&](QRgb pixel) { return pixel != first; })) return false;
    }
    return true;
}

} // namespace

std::optional<CityPicture> QtCityPictureMaker::ofPicture(std::string_view png, std::int64_t width,
                                                         std::int64_t height) {
    QByteArray held = QByteArray::fromRawData(png.data(), static_cast<qsizetype>(png.size()));
    QBuffer file{&held};
    file.open(QIODevice::ReadOnly);
    QImageReader reader{&file, "png"};
    // Before a pixel is read: a small file may be a picture of any size.
    const QSize size = reader.size();
    if (!size.isValid() || size.width() != width || size.height() != height) return std::nullopt;
    const QImage drawn = reader.read();
    if (drawn.isNull()) return std::nullopt;
    QImage fresh{size, QImage::Format_RGB32};
    fresh.fill(Qt::white);
    QPainter{&fresh}.drawImage(QRect{{}, size}, drawn);
    if (isOfOneColour(fresh)) return std::nullopt;
    for (const int quality : cityQualities) {
        QByteArray jpeg;
        QBuffer out{&jpeg};
        out.open(QIODevice::WriteOnly);
        if (!fresh.save(&out, "JPEG", quality)) return std::nullopt;
        if (std::cmp_less_equal(jpeg.size(), CityPicture::maxBytes))
            return CityPicture{cityId(jpeg), jpeg.toStdString()};
    }
    return std::nullopt;
}

} // namespace lumaro
