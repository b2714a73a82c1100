// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Board/ItemPaper.h"

#include "Widgets/Items/ItemPainting.h"

#include <QtGui/QPainter>

#include <cmath>

namespace lumaro {

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

void ItemPaper::paint(QPainter& painter) {
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
