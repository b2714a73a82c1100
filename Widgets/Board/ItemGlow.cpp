// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Board/ItemGlow.h"

#include "DesignSystem/Mask.h"
#include "Widgets/Items/ItemPainting.h"

#include <QtGui/QPainter>

#include <array>
#include <cmath>

namespace lumaro {
namespace {

/// Light that falls off by a bell of this width, in points of the canvas.
struct Halo {
    double sigma;
    QRgb colour;
    double strength;
};

constexpr std::array<Halo, 2> halos{{{20, 0xFFF0A23C, 0.72}, {6.5, 0xFFFFD983, 0.95}}};
constexpr double halosReach = 3 * halos.front().sigma;
constexpr double coarseness = 0.5; // pixels of the shape for one of the view: it is blurred anyway
// Shadows are fainter than what casts them.
constexpr double shadowAtMost = 0.55;
constexpr double paperAtLeast = 0.85;

} // namespace

void ItemGlow::lay() {
    reach_ = std::ceil(halosReach * pointScale());
    setImplicitSize(std::ceil(naturalSize().width() * pointScale()) + 2 * reach_,
                    std::ceil(naturalSize().height() * pointScale()) + 2 * reach_);
}

void ItemGlow::paintLit(QPainter& painter) {
    const QSize pixels = (size() * coarseness).toSize().expandedTo({1, 1});
    QImage shape{pixels, QImage::Format_ARGB32_Premultiplied};
    shape.fill(Qt::transparent);
    QPainter shaping{&shape};
    shaping.scale(pixels.width() / width(), pixels.height() / height());
    shaping.translate(reach_, reach_);
    shaping.scale(pointScale(), pointScale());
    paintItem(shaping, face(), naturalSize());
    shaping.end();
    auto paper = Mask::of(shape);
    paper.sharpen(shadowAtMost, paperAtLeast);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (const auto& halo : halos) {
        auto light = paper;
        light.blur(halo.sigma * pointScale() * coarseness);
        // A straight edge keeps a half of its light: full there, it fades outwards from it.
        light.sharpen(0, 0.5);
        painter.setOpacity(halo.strength);
        painter.drawImage(QRectF{{0, 0}, size()}, light.tinted(QColor::fromRgb(halo.colour)));
    }
}

} // namespace lumaro
