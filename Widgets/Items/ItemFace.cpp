// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/ItemFace.h"

namespace lumaro {

ItemFace ItemFace::withoutText() const {
    const auto* const note = as<NoteFace>();
    if (note == nullptr) return *this;
    auto bare = *note;
    bare.hidesText = true;
    return bare;
}

ItemFace ItemFace::withoutFall() const {
    const auto* const window = as<WindowFace>();
    if (window == nullptr || !window->view) return *this;
    auto dry = *window;
    dry.view->isStill = false;
    return dry;
}

ItemPicture ItemFace::picture() const {
    if (const auto* const photo = as<PhotoFace>()) return photo->picture;
    if (const auto* const sticker = as<StickerFace>()) return sticker->picture;
    if (const auto* const music = as<MusicFace>()) return music->cover;
    if (const auto* const window = as<WindowFace>()) return window->city;
    return {};
}

const ItemFace::Value& ItemFace::emptyValue() {
    static const Value empty = NoteFace{};
    return empty;
}

} // namespace lumaro
