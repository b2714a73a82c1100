// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Board/ItemPaper.h"

#include "Widgets/Items/ItemPainting.h"

#include <QtGui/QPainter>

#include <cmath>

namespace lumaro {

namespace {

bool isRestSame(const MusicFace& before, const MusicFace& after) {
    using enum MusicFace::State;
    if (before.state == none && after.state == none) return before.words == after.words;
    return before.state != none && after.state != none;
}

bool isLightSame(MusicFace before, const MusicFace& after) {
    before.cover = after.cover;
    return before == after;
}

} // namespace

void ItemPaper::setPart(Part part) {
    if (part_ == part) return;
    part_ = part;
    repaint();
    Q_EMIT partChanged();
}

void ItemPaper::lay() {
    const auto reach = lumaro::bleed(face()) * pointScale();
    bleed_ = {std::ceil(reach.left()), std::ceil(reach.top()), std::ceil(reach.right()), std::ceil(reach.bottom())};
    setImplicitSize(std::ceil(naturalSize().width() * pointScale()) + bleed_.left() + bleed_.right(),
                    std::ceil(naturalSize().height() * pointScale()) + bleed_.top() + bleed_.bottom());
}

bool ItemPaper::looksSame(const ItemFace& before, const ItemFace& after) const {
    const auto* const was = before.as<MusicFace>();
    const auto* const is = after.as<MusicFace>();
    if (part_ == Part::Whole || !was || !is) return before == after;
    return part_ == Part::Under ? isRestSame(*was, *is) : isLightSame(*was, *is);
}

ItemPicture ItemPaper::pictureWithin() const {
    return part_ == Part::Whole ? FacePicture::pictureWithin() : ItemPicture{};
}

void ItemPaper::paintLit(QPainter& painter) {
    painter.translate(bleed_.left(), bleed_.top());
    painter.scale(pointScale(), pointScale());
    if (part_ == Part::Whole) return paintItem(painter, face(), naturalSize());
    const auto* const music = face().as<MusicFace>();
    if (!music) return;
    if (part_ == Part::Under)
        paintRecordRest(painter, *music, naturalSize());
    else
        paintRecordLight(painter, *music, naturalSize());
}

} // namespace lumaro
