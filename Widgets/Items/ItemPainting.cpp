// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/ItemPainting.h"

#include "LumaroCore/Support/Overloaded.h"
#include "Widgets/Items/Painters.h"
#include "Widgets/Items/Shadow.h"

#include <QtGui/QPainter>

namespace lumaro {

void paintItem(QPainter& painter, const ItemFace& face, QSizeF size) {
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    std::visit([&](const auto& one) { paintFace(painter, one, size); }, face.value());
    painter.restore();
}

QMarginsF bleed(const ItemFace& face) {
    const QMarginsF flat = shadowReach(1);
    return std::visit(
        Overloaded{
            [&](const NoteFace&) { return flat | QMarginsF{0, 18, 0, 0}; },
            [&](const PhotoFace&) { return flat | QMarginsF{0, 18, 0, 0}; },
            [&](const CountdownFace& one) { return one.isThere ? flat | QMarginsF{30, 34, 30, 30} : flat; },
            [](const MusicFace&) { return shadowReach(1.3) | QMarginsF{0, 0, 0, 34}; },
            [](const WindowFace&) { return shadowReach(1.3); },
            [&](const ClocksFace&) { return flat | QMarginsF{0, 14, 0, 0}; },
            [&](const DayFace&) { return flat | QMarginsF{0, 12, 0, 0}; },
            [&](const BlockFace&) { return flat | QMarginsF{0, 14, 0, 0}; },
            [](const StickerFace& one) { return shadowReach(one.isLifted ? 1.8 : 0.8); },
            [](const DoodleFace&) { return QMarginsF{3, 3, 5, 6}; },
        },
        face.value());
}

} // namespace lumaro
