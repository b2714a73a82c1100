// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Picture.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace lumaro {
namespace {

double pixelsPerPoint(const QPainter& painter) {
    const auto& matrix = painter.deviceTransform();
    return std::sqrt(std::abs(matrix.determinant()));
}

} // namespace

void paintPicture(QPainter& painter, const QRectF& rect, const QImage& picture) {
    if (picture.isNull() || rect.isEmpty()) return;
    const QSizeF part = rect.size().scaled(picture.size(), Qt::KeepAspectRatio);
    const QRectF source{QPointF{(picture.width() - part.width()) / 2, (picture.height() - part.height()) / 2}, part};
    const QSize pixels = (rect.size() * pixelsPerPoint(painter)).toSize().expandedTo(QSize{1, 1});
    if (part.width() <= 1.5 * pixels.width()) {
        painter.drawImage(rect, picture, source);
        return;
    }
    const QImage cropped = picture.copy(source.toAlignedRect().intersected(picture.rect()));
    painter.drawImage(rect, cropped.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

} // namespace lumaro
