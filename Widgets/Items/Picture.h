// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QRectF>

class QImage;
class QPainter;

namespace lumaro {

/// Fills `rect` with the middle of a picture, cropped to its shape. Scaled down with care to the pixels of the device,
/// so that a large photo does not shimmer.
void paintPicture(QPainter& painter, const QRectF& rect, const QImage& picture);

} // namespace lumaro
