// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QSizeF>

class QPainter;

namespace lumaro {

/// The red thread from the left edge to the right, with a bow where its halves meet. `progress` 0 to 1 draws both
/// halves to the middle, then ties the bow. `scale` is pixels a point: of the thread's width and the bow.
void paintThread(QPainter& painter, QSizeF size, double scale, double progress);

} // namespace lumaro
