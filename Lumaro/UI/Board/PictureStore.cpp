// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/PictureStore.h"

#include "Lumaro/UI/Text.h"

#include <QtGui/QImageReader>

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

namespace lumaro {
namespace {

/// Sides asked for are rounded up to steps of an eighth, so that a window that grows decodes a few times, not at every
/// pixel.
int roundedSide(Size pixels) {
    const auto side =
        static_cast<unsigned>(std::clamp(std::ceil(std::max(pixels.width, pixels.height)), 128.0, 4096.0));
    const unsigned step = std::bit_ceil(side) / 8;
    return static_cast<int>((side + step - 1) / step * step);
}

/// The file may be anything that the room let through: what is no picture is null.
QImage decoded(const QString& path, int side) {
    QImageReader reader{path};
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.isValid() && std::max(size.width(), size.height()) > side) {
        reader.setScaledSize(size.scaled(side, side, Qt::KeepAspectRatio));
    }
    auto image = reader.read();
    if (image.isNull()) return image;
    return std::move(image).convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                                    : QImage::Format_RGB32);
}

} // namespace

QImage PictureStore::picture(const UUID& id, Size pixels) {
    auto& entry = entries_[id];
    const int side = roundedSide(pixels);
    if (side > entry.side && !entry.decoding) {
        entry.side = side;
        decode(id, entry);
    }
    return entry.picture;
}

void PictureStore::keepOnly(const std::set<UUID>& ids) {
    std::erase_if(entries_, [&](const auto& entry) { return !ids.contains(entry.first); });
}

void PictureStore::decode(const UUID& id, Entry& entry) {
    const auto path = cache_.pathOf(id);
    if (!path) {
        entry.side = 0;
        return;
    }
    cache_.touch(id);
    entry.decoding = inBackground(
        background_, [path = qText(*path), side = entry.side] { return decoded(path, side); },
        [this, id](QImage picture) {
            auto& done = entries_.at(id); // which ends with its entry
            const auto task = std::move(done.decoding);
            if (!picture.isNull()) done.picture = std::move(picture);
            if (arrived_) arrived_();
        });
}

} // namespace lumaro
