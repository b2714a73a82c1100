// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/ShadowProvider.h"

#include "DesignSystem/Mask.h"

#include <QtGui/QColor>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <cmath>

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

/// How much of each pixel the sheet's shadow covers when the sheet lies `shift` off its place; blurred by three running
/// means of 2 `reach` + 1 pixels.
Mask shade(const Paper& paper, QPointF shift, int reach) {
    const double inner = paper.side() - 2 * paper.margin();
    QPainterPath sheet;
    sheet.addRoundedRect(QRectF{paper.margin() + shift.x(), paper.margin() + shift.y(), inner, inner}, paper.radius,
                         paper.radius);
    auto mask = Mask::of(sheet, QRectF{0, 0, double(paper.side()), double(paper.side())}, 1);
    mask.blur(std::sqrt(reach * (reach + 1)));
    return mask;
}

} // namespace

QImage ShadowProvider::requestImage(const QString& id, QSize* size, const QSize&) {
    const auto shape = id.section(QLatin1Char{'?'}, 0, 0);
    const Paper paper{std::clamp(shape.section(QLatin1Char{'/'}, 0, 0).toInt(), 0, tallest),
                      std::clamp(shape.section(QLatin1Char{'/'}, 1, 1).toInt(), 1, tallest)};
    const double away = paper.height / 4.0;
    const auto contact = shade(paper, {0.5, 1}, 1);
    const auto ambient = shade(paper, {away, 2 * away}, std::max(1, paper.height / 2));
    const QColor ink{QLatin1Char{'#'} + id.section(QLatin1Char{'?'}, 1)};
    QImage image{paper.side(), paper.side(), QImage::Format_ARGB32};
    for (int y = 0; y < paper.side(); ++y) {
        for (int x = 0; x < paper.side(); ++x) {
            const double alpha = 1 - (1 - contactAlpha * contact.at(x, y)) * (1 - ambientAlpha * ambient.at(x, y));
            image.setPixel(x, y, qRgba(ink.red(), ink.green(), ink.blue(), qRound(alpha * 255)));
        }
    }
    if (size != nullptr) *size = image.size();
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace lumaro
