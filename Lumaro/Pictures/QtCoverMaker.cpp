// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Pictures/QtCoverMaker.h"

#include <QBuffer>
#include <QColorSpace>
#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QUrl>
#include <QUuid>

#include <algorithm>
#include <array>

namespace lumaro {
namespace {

constexpr int coverSide = 512;
constexpr qint64 maxCoverPixels = qint64{4096} * 4096;
constexpr std::array coverQualities{82, 70, 55, 40, 25};
// What players and catalogues use. A drawing that is a program, such as SVG, is not among them.
const std::array<QByteArray, 5> coverFormats{"jpeg", "png", "webp", "gif", "bmp"};

// So that no id of ours is one of another program's.
QUuid coverSpace() {
    return QUuid{0x6f6c7b0a, 0x5b0e, 0x4d4e, 0x9d, 0x1c, 0x3c, 0x7a, 0x1f, 0x0f, 0x5a, 0x11};
}

UUID named(const QByteArray& name) {
    const auto bytes = QUuid::createUuidV5(coverSpace(), name).toRfc4122();
    UUID id;
    std::ranges::copy(bytes, reinterpret_cast<char*>(id.bytes.data()));
    return id;
}

QImage read(QBuffer& file) {
    QImageReader reader{&file};
    reader.setAutoTransform(true);
    const QByteArray format = reader.format();
    if (std::ranges::find(coverFormats, format) == coverFormats.end()) return {};
    const QSize size = reader.size();
    if (!size.isValid() || qint64{size.width()} * size.height() > maxCoverPixels) return {};
    const bool isLarge = std::max(size.width(), size.height()) > coverSide;
    if (isLarge && format == "jpeg") {
        reader.setScaledSize(size.scaled(coverSide, coverSide, Qt::KeepAspectRatio).expandedTo({1, 1}));
    }
    return reader.read();
}

// On white, in sRGB, and without a word of where it comes from.
QImage bare(QImage picture) {
    if (picture.colorSpace().isValid()) picture.convertToColorSpace(QColorSpace::SRgb);
    if (std::max(picture.width(), picture.height()) > coverSide) {
        picture = picture.scaled(coverSide, coverSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    }
    picture.setDevicePixelRatio(1);
    QImage fresh{picture.size(), QImage::Format_RGB32};
    fresh.fill(Qt::white);
    QPainter{&fresh}.drawImage(0, 0, picture);
    return fresh;
}

QByteArray jpegOf(const QImage& picture) {
    for (const int quality : coverQualities) {
        QByteArray bytes;
        QBuffer buffer{&bytes};
        buffer.open(QIODevice::WriteOnly);
        if (!picture.save(&buffer, "JPEG", quality)) return {};
        if (std::cmp_less_equal(bytes.size(), Cover::maxBytes)) return bytes;
    }
    return {};
}

// A pipe or a device would keep the reader waiting, or never end.
QByteArray plainFile(const QUrl& url) {
    if (!url.host().isEmpty()) return {};
    const QFileInfo info{url.toLocalFile()};
    if (!info.isFile() || std::cmp_greater(info.size(), CoverMaker::maxPictureBytes)) return {};
    QFile file{info.filePath()};
    if (!file.open(QIODevice::ReadOnly)) return {};
    return file.read(CoverMaker::maxPictureBytes);
}

// "data:[<type>][;base64],<data>", RFC 2397; pictures come in base64.
QByteArray dataIn(const QByteArray& url) {
    const auto comma = url.indexOf(',');
    if (comma < 0 || !url.first(comma).endsWith(";base64")) return {};
    const auto data = QByteArray::fromPercentEncoding(url.sliced(comma + 1));
    auto decoded = QByteArray::fromBase64Encoding(data, QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? std::move(decoded.decoded) : QByteArray{};
}

} // namespace

std::optional<Cover> QtCoverMaker::ofPicture(std::string_view bytes) {
    QByteArray held = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QBuffer file{&held};
    file.open(QIODevice::ReadOnly);
    QImage picture = read(file);
    if (picture.isNull()) return std::nullopt;
    const auto jpeg = jpegOf(bare(std::move(picture)));
    if (jpeg.isEmpty()) return std::nullopt;
    return Cover{named(QCryptographicHash::hash(jpeg, QCryptographicHash::Sha256)), jpeg.toStdString()};
}

std::optional<Cover> QtCoverMaker::ofLocalUrl(const std::string& url) {
    const auto text = QByteArray::fromStdString(url);
    const auto bytes = text.startsWith("data:") ? dataIn(text) : plainFile(QUrl::fromEncoded(text));
    return bytes.isEmpty() ? std::nullopt : ofPicture({bytes.data(), static_cast<std::size_t>(bytes.size())});
}

UUID QtCoverMaker::idOf(std::string_view text) {
    return named(QByteArray{text.data(), static_cast<qsizetype>(text.size())});
}

} // namespace lumaro
