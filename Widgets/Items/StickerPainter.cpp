// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Mask.h"
#include "Widgets/Items/Lettering.h"
#include "Widgets/Items/Painters.h"
#include "Widgets/Items/Palette.h"
#include "Widgets/Items/Picture.h"
#include "Widgets/Items/Shadow.h"

#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <cmath>
#include <optional>

namespace lumaro {
namespace {

constexpr double stickerDensity = 2; // pixels a point of what is worked on as a picture
constexpr double edge = 7;           // the die-cut border

QImage layer(QSizeF size) {
    QImage picture{(size * stickerDensity).toSize().expandedTo(QSize{1, 1}), QImage::Format_ARGB32_Premultiplied};
    picture.fill(Qt::transparent);
    return picture;
}

QRectF motifRect(QSizeF size) {
    return {edge, edge, size.width() - 2 * edge, size.height() - 2 * edge};
}

// The sheet that the motif was cut from: its shape and a border around it, with the corners rounded off.
QImage dieCut(const QImage& motif) {
    Mask mask = Mask::of(motif);
    mask.blur(4.2 * stickerDensity);
    mask.sharpen(0.075, 0.105);
    return mask.tinted(lit({255, 252, 244}, 0.30));
}

QImage motifLayer(const StickerFace& face, QSizeF size) {
    QImage motif = layer(size);
    QPainter painter{&motif};
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.scale(stickerDensity, stickerDensity);
    paintPicture(painter, motifRect(size), face.picture.pixels());
    return motif;
}

// Where there is no picture yet: a blank round sticker that says so.
QImage blankLayer(const StickerFace& face, QSizeF size) {
    QImage blank = layer(size);
    QPainter painter{&blank};
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(stickerDensity, stickerDensity);
    const double side = std::min(size.width(), size.height()) - 2 * edge;
    const QRectF round = QRectF{(size.width() - side) / 2, (size.height() - side) / 2, side, side};
    painter.setPen(Qt::NoPen);
    painter.setBrush(lit({236, 222, 200}, 0.70));
    painter.drawEllipse(round);
    painter.setPen(tint::ink);
    drawLines(painter, round.adjusted(16, 0, -16, 0), Qt::AlignCenter, face.words, hand(28), 3);
    return blank;
}

QImage stickerLayer(const StickerFace& face, QSizeF size) {
    const QImage motif = face.picture.pixels().isNull() ? blankLayer(face, size) : motifLayer(face, size);
    QImage sticker = dieCut(motif);
    QPainter painter{&sticker};
    painter.drawImage(0, 0, motif);
    // The light on its surface, and none beside it.
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    QLinearGradient light{0, 0, sticker.width() * 0.8, sticker.height() * 1.0};
    light.setColorAt(0, faint(tint::light, 0.22));
    light.setColorAt(0.4, faint(tint::light, 0));
    light.setColorAt(1, faint(tint::umber, 0.10));
    painter.fillRect(sticker.rect(), light);
    return sticker;
}

// How far the opaque part reaches towards the top right, measured along x - y.
std::optional<double> cornerReach(const QImage& sticker) {
    std::optional<double> reach;
    for (int y = 0; y < sticker.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(sticker.constScanLine(y));
        for (int x = sticker.width() - 1; x >= 0; --x) {
            if (qAlpha(line[x]) < 128) continue;
            reach = std::max<double>(reach.value_or(x - y), x - y);
            break;
        }
    }
    return reach;
}

// Everything beyond the line x - y = `fold`, in pixels.
QPainterPath beyond(double fold, QSize size) {
    const double far = size.width() + size.height();
    QPainterPath path;
    path.addPolygon(QPolygonF{{QPointF{fold - far, -far}, QPointF{fold + far, far}, QPointF{fold + 3 * far, -far}}});
    path.closeSubpath();
    return path;
}

// The back of the sticker: what was beyond the fold, mirrored in it, pale and round in the light.
QImage flapLayer(const QImage& sticker, double fold, double depth) {
    QImage flap{sticker.size(), QImage::Format_ARGB32_Premultiplied};
    flap.fill(Qt::transparent);
    QPainter painter{&flap};
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    // Mirrored in x - y = fold: (x, y) goes to (y + fold, x - fold).
    painter.setTransform(QTransform{0, 1, 1, 0, fold, -fold});
    painter.setClipPath(beyond(fold, sticker.size()));
    painter.drawImage(0, 0, sticker);
    painter.setClipping(false);
    painter.resetTransform();
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    const QPointF crease{(sticker.width() + fold) / 2.0, (sticker.width() - fold) / 2.0};
    QLinearGradient roll{crease, crease + QPointF{-depth / 2, depth / 2}};
    roll.setColorAt(0, {214, 196, 170});
    roll.setColorAt(0.35, {255, 252, 244});
    roll.setColorAt(0.7, {244, 234, 216});
    roll.setColorAt(1, {226, 211, 188});
    painter.fillRect(flap.rect(), roll);
    return flap;
}

void peel(QPainter& painter, QImage sticker, const QRectF& rect) {
    const double depth = 0.30 * std::min(sticker.width(), sticker.height());
    const auto reach = cornerReach(sticker);
    if (!reach) return;
    const double fold = *reach - depth;
    const QImage flap = flapLayer(sticker, fold, depth);
    QPainter cutting{&sticker};
    cutting.setRenderHint(QPainter::Antialiasing);
    cutting.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    cutting.fillPath(beyond(fold, sticker.size()), Qt::white);
    cutting.end();
    paintShadow(painter, sticker, rect, 1.8);
    painter.drawImage(rect, sticker);
    paintShadow(painter, flap, rect, 0.5);
    painter.drawImage(rect, flap);
}

} // namespace

void paintFace(QPainter& painter, const StickerFace& face, QSizeF size) {
    const QRectF rect{{0, 0}, size};
    const QImage sticker = stickerLayer(face, size);
    if (face.isLifted) {
        peel(painter, sticker, rect);
    } else {
        paintShadow(painter, sticker, rect, 0.8);
        painter.drawImage(rect, sticker);
    }
}

} // namespace lumaro
