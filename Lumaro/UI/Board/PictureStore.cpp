// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/PictureStore.h"

#include "Lumaro/UI/Board/StoredPicture.h"
#include "Lumaro/UI/Text.h"

#include <QtGui/QImageReader>

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

namespace lumaro {
namespace {

constexpr Seconds paintingTime{10}; // also of a window that is still being opened

/// Sides asked for are rounded up to steps of an eighth, so that a window that grows decodes a few times, not at every
/// pixel.
int roundedSide(Size pixels) {
    const auto side =
        static_cast<unsigned>(std::clamp(std::ceil(std::max(pixels.width, pixels.height)), 128.0, 4096.0));
    const unsigned step = std::bit_ceil(side) / 8;
    return static_cast<int>((side + step - 1) / step * step);
}

QImage read(const QString& path, int side) {
    QImageReader reader{path};
    return readStored(reader, side);
}

} // namespace

ItemPicture PictureStore::picture(const UUID& id, Size pixels) {
    auto& entry = entryOf(id);
    const int side = roundedSide(pixels);
    if (side > entry.side && !entry.decoding) {
        entry.side = side;
        decode(id, entry);
    }
    return entry.version == 0 ? ItemPicture{} : ItemPicture{entry.place, entry.version};
}

void PictureStore::keepOnly(const std::set<UUID>& ids) {
    for (auto& [id, entry] : entries_) {
        if (!ids.contains(id)) entry.place->wanted = nullptr;
    }
    std::erase_if(entries_, [&](const auto& entry) { return !ids.contains(entry.first); });
}

PictureStore::Entry& PictureStore::entryOf(const UUID& id) {
    auto& entry = entries_[id];
    if (!entry.place) {
        entry.place = std::make_shared<ItemPicture::Place>();
        entry.place->wanted = [this, id, &entry] { decode(id, entry); };
    }
    return entry;
}

void PictureStore::decode(const UUID& id, Entry& entry) {
    if (entry.decoding) return;
    const auto path = ports_.cache.pathOf(id);
    if (!path) {
        entry.side = 0;
        return;
    }
    ports_.cache.touch(id);
    entry.decoding = inBackground(
        ports_.background, [path = qText(*path), side = entry.side] { return read(path, side); },
        [this, id](QImage pixels) { decoded(id, std::move(pixels)); });
}

void PictureStore::decoded(const UUID& id, QImage pixels) {
    auto& entry = entries_.at(id); // which ends with its decoding
    const auto task = std::move(entry.decoding);
    if (!pixels.isNull()) {
        entry.place->pixels = std::move(pixels);
        ++entry.version;
    }
    tiring_ = ports_.sleeper.wait(paintingTime, [this] { sleep(); });
    if (arrived_) arrived_();
}

void PictureStore::sleep() {
    for (auto& [id, entry] : entries_) entry.place->pixels = QImage{};
}

} // namespace lumaro
