// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Shadow.h"

#include "DesignSystem/Mask.h"
#include "Widgets/Items/Palette.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <mutex>

namespace lumaro {
namespace {

struct Layer {
    QPointF offset;
    double sigma = 1; // of the blur, in points
    double opacity = 0;
    double density = 1; // pixels a point: soft shadows need few
};

std::array<Layer, 2> layersAt(double lift) {
    return {Layer{.offset = {3.5 * lift, 6 * lift}, .sigma = 7 * lift, .opacity = 0.22, .density = 0.5},
            Layer{.offset = {0.8 * lift, 1.6 * lift}, .sigma = 1.5 * std::sqrt(lift), .opacity = 0.27, .density = 1}};
}

QRectF spread(const QRectF& rect, const Layer& layer) {
    const double reach = std::ceil(3 * layer.sigma);
    return rect.adjusted(-reach, -reach, reach, reach);
}

QImage shade(Mask mask, const Layer& layer) {
    mask.blur(layer.sigma * layer.density);
    return mask.tinted(faint(tint::umber, layer.opacity));
}

struct Shade {
    QImage picture;
    QRectF place;
};

std::array<Shade, 2> shadesOf(const QPainterPath& outline, double lift) {
    std::array<Shade, 2> shades;
    std::ranges::transform(layersAt(lift), shades.begin(), [&](const Layer& layer) {
        QRectF area = spread(outline.boundingRect(), layer);
        area.setSize((area.size() * layer.density).toSize().toSizeF() / layer.density);
        return Shade{shade(Mask::of(outline, area, layer.density), layer), area.translated(layer.offset)};
    });
    return shades;
}

// Most items are of few shapes: the shadows of the latest ones are kept.
std::array<Shade, 2> keptShades(const QPainterPath& outline, double lift) {
    struct Kept {
        QPainterPath outline;
        double lift;
        std::array<Shade, 2> shades;
    };
    constexpr std::size_t most = 24;
    static std::mutex mutex; // windows may be painted on several threads
    static std::deque<Kept> kept;
    const std::scoped_lock lock{mutex};
    const auto found =
        std::ranges::find_if(kept, [&](const Kept& one) { return one.lift == lift && one.outline == outline; });
    if (found != kept.end()) return found->shades;
    if (kept.size() == most) kept.pop_front();
    return kept.emplace_back(outline, lift, shadesOf(outline, lift)).shades;
}

} // namespace

void paintShadow(QPainter& painter, const QPainterPath& outline, double lift) {
    for (const auto& [picture, place] : keptShades(outline, lift)) painter.drawImage(place, picture);
}

void paintShadow(QPainter& painter, const QImage& picture, const QRectF& rect, double lift) {
    for (const auto& layer : layersAt(lift)) {
        const QRectF area = spread(rect, layer);
        QImage spaced{(area.size() * layer.density).toSize(), QImage::Format_ARGB32_Premultiplied};
        spaced.fill(Qt::transparent);
        QPainter shrinking{&spaced};
        shrinking.setRenderHint(QPainter::SmoothPixmapTransform);
        shrinking.scale(spaced.width() / area.width(), spaced.height() / area.height());
        shrinking.drawImage(rect.translated(-area.topLeft()), picture);
        shrinking.end();
        painter.drawImage(area.translated(layer.offset), shade(Mask::of(spaced), layer));
    }
}

QMarginsF shadowReach(double lift) {
    QMarginsF reach;
    for (const auto& layer : layersAt(lift)) {
        const double blur = std::ceil(3 * layer.sigma);
        reach = reach | QMarginsF{blur - layer.offset.x(), blur - layer.offset.y(), blur + layer.offset.x(),
                                  blur + layer.offset.y()};
    }
    return reach;
}

} // namespace lumaro
