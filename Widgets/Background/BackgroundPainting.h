// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QSizeF>
#include <QtCore/QString>

class QPainter;

namespace lumaro {

/// How bright the room is around the board.
enum class Appearance { light, dark };

/// Fills `size` with a board's paper seen through glass.
void paintBackground(QPainter& painter, QSizeF size, const QString& background, Appearance appearance);

} // namespace lumaro
