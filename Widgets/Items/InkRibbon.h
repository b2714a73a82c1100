// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Payload.h"

#include <QtGui/QPainterPath>

namespace lumaro {

/// The middle of a line as it is drawn: from middle to middle of its points, each point pulling the curve, so that no
/// corner is left.
QPainterPath inkPath(const InkStroke& stroke);

/// All that the ink of a live line covers, to be filled: a curve through its points, as wide as it is at each of them,
/// with round ends. The line has a point.
QPainterPath inkRibbon(const InkStroke& stroke);

} // namespace lumaro
