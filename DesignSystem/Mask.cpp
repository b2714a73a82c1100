// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Mask.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <cmath>

namespace lumaro {

Mask::Mask(int width, int height)
    : width_(width), height_(height), values_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {
}

Mask Mask::of(const QPainterPath& path, const QRectF& area, double density) {
    const QSize pixels = (area.size() * density).toSize().expandedTo(QSize{1, 1});
    QImage picture{pixels, QImage::Format_ARGB32_Premultiplied};
    picture.fill(Qt::transparent);
    QPainter painter{&picture};
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(density, density);
    painter.translate(-area.topLeft());
    painter.fillPath(path, Qt::white);
    painter.end();
    return of(picture);
}

Mask Mask::of(const QImage& picture) {
    const QImage pixels = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    Mask mask{pixels.width(), pixels.height()};
    auto value = mask.values_.begin();
    for (int y = 0; y < mask.height_; ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(pixels.constScanLine(y));
        value = std::transform(line, line + mask.width_, value,
                               [](QRgb pixel) { return static_cast<float>(qAlpha(pixel)) / 255.0F; });
    }
    return mask;
}

void Mask::blur(double sigma) {
    // Three running means of 2 r + 1 pixels make about a bell: their variances add up to r (r + 1).
    const int reach = static_cast<int>(std::lround(std::sqrt(sigma * sigma + 0.25) - 0.5));
    if (reach < 1) return;
    for (int axis = 0; axis < 2; ++axis) {
        for (int pass = 0; pass < 3; ++pass) blurRows(reach);
        transpose();
    }
}

void Mask::blurRows(int reach) {
    std::vector<float> row(static_cast<std::size_t>(width_));
    const float share = 1.0F / static_cast<float>(2 * reach + 1);
    for (int y = 0; y < height_; ++y) {
        float* const line = values_.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width_);
        std::copy_n(line, width_, row.begin());
        const auto at = [&](int x) { return x < 0 || x >= width_ ? 0.0F : row[static_cast<std::size_t>(x)]; };
        float sum = 0;
        for (int x = -reach; x < reach; ++x) sum += at(x);
        for (int x = 0; x < width_; ++x) {
            sum += at(x + reach);
            line[x] = sum * share;
            sum -= at(x - reach);
        }
    }
}

void Mask::transpose() {
    std::vector<float> turned(values_.size());
    const auto width = static_cast<std::size_t>(width_);
    const auto height = static_cast<std::size_t>(height_);
    for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < width; ++x) turned[x * height + y] = values_[y * width + x];
    }
    values_ = std::move(turned);
    std::swap(width_, height_);
}

void Mask::sharpen(double low, double high) {
    const auto start = static_cast<float>(low);
    const auto slope = static_cast<float>(1 / (high - low));
    for (float& value : values_) value = std::clamp((value - start) * slope, 0.0F, 1.0F);
}

QImage Mask::tinted(const QColor& colour) const {
    QImage picture{width_, height_, QImage::Format_ARGB32_Premultiplied};
    auto value = values_.begin();
    for (int y = 0; y < height_; ++y) {
        auto* const line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < width_; ++x, ++value) {
            const float alpha = colour.alphaF() * std::clamp(*value, 0.0F, 1.0F);
            line[x] = qPremultiply(qRgba(colour.red(), colour.green(), colour.blue(), qRound(alpha * 255)));
        }
    }
    return picture;
}

} // namespace lumaro
