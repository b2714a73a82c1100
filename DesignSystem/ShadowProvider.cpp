// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/ShadowProvider.h"

#include <QtGui/QColor>
#include <QtGui/QPainter>

#include <algorithm>
#include <vector>

namespace lumaro {
namespace {

constexpr double contactAlpha = 0.20;
constexpr double ambientAlpha = 0.22;
constexpr int tallest = 64;

struct Paper {
    int radius = 0;
    int height = 0;

    int margin() const { return 2 * height; }
    int corner() const { return margin() + radius + height; }
    int side() const { return 2 * corner() + 2; }
};

using Alpha = std::vector<double>;

/// How much of each pixel the sheet covers when it lies `shift` off its place.
Alpha coverage(const Paper& paper, QPointF shift) {
    QImage mask{paper.side(), paper.side(), QImage::Format_Alpha8};
    mask.fill(0);
    QPainter painter{&mask};
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    const double inner = paper.side() - 2 * paper.margin();
    painter.drawRoundedRect(QRectF{paper.margin() + shift.x(), paper.margin() + shift.y(), inner, inner}, paper.radius,
                            paper.radius);
    painter.end();
    Alpha alpha;
    alpha.reserve(static_cast<std::size_t>(paper.side()) * static_cast<std::size_t>(paper.side()));
    for (int y = 0; y < paper.side(); ++y) {
        const auto* const line = mask.constScanLine(y);
        std::transform(line, line + paper.side(), std::back_inserter(alpha), [](uchar it) { return it / 255.0; });
    }
    return alpha;
}

/// One pass of a box along the rows, with rows and columns exchanged in what comes out: two passes blur both ways.
Alpha boxed(const Alpha& from, int side, int reach) {
    Alpha to(from.size());
    const auto at = [side](int x, int y) {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(side) + static_cast<std::size_t>(x);
    };
    for (int y = 0; y < side; ++y) {
        double sum = 0;
        for (int x = -reach; x < side; ++x) {
            if (x + reach < side) sum += from[at(x + reach, y)];
            if (x - reach > 0) sum -= from[at(x - reach - 1, y)];
            if (x >= 0) to[at(y, x)] = sum / (2 * reach + 1);
        }
    }
    return to;
}

/// Three boxes come close to the bell curve.
Alpha blurred(Alpha alpha, int side, int reach) {
    for (int pass = 0; pass < 6; ++pass) alpha = boxed(alpha, side, reach);
    return alpha;
}

} // namespace

QImage ShadowProvider::requestImage(const QString& id, QSize* size, const QSize&) {
    const auto shape = id.section(QLatin1Char{'?'}, 0, 0);
    const Paper paper{std::clamp(shape.section(QLatin1Char{'/'}, 0, 0).toInt(), 0, tallest),
                      std::clamp(shape.section(QLatin1Char{'/'}, 1, 1).toInt(), 1, tallest)};
    const double away = paper.height / 4.0;
    const auto contact = blurred(coverage(paper, {0.5, 1}), paper.side(), 1);
    const auto ambient = blurred(coverage(paper, {away, 2 * away}), paper.side(), std::max(1, paper.height / 2));
    const QColor ink{QLatin1Char{'#'} + id.section(QLatin1Char{'?'}, 1)};
    QImage image{paper.side(), paper.side(), QImage::Format_ARGB32};
    std::size_t at = 0;
    for (int y = 0; y < paper.side(); ++y) {
        for (int x = 0; x < paper.side(); ++x, ++at) {
            const double alpha = 1 - (1 - contactAlpha * contact[at]) * (1 - ambientAlpha * ambient[at]);
            image.setPixel(x, y, qRgba(ink.red(), ink.green(), ink.blue(), qRound(alpha * 255)));
        }
    }
    if (size != nullptr) *size = image.size();
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace lumaro
