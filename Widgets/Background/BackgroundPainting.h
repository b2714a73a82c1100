// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Items/Light.h"

#include <QtCore/QSizeF>
#include <QtCore/QString>

class QPainter;

namespace lumaro {

/// Fills `size` with a board's paper seen through glass.
void paintBackground(QPainter& painter, QSizeF size, const QString& background, Appearance appearance);

} // namespace lumaro
