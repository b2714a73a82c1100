// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Geometry/CanvasTransform.h"

#include <algorithm>
#include <cmath>

namespace lumaro::VirtualCanvas {
namespace {

constexpr Size canvas = BoardSpec::canvasSize;

bool hasArea(Size size) {
    return std::isfinite(size.width) && std::isfinite(size.height) && size.width > 0 && size.height > 0;
}

CanvasTransform centred(Rect rect, double scale) {
    const Point centre = rect.centre();
    const Point offset{centre.x - canvas.width * scale / 2, centre.y - canvas.height * scale / 2};
    // Filling a view near the largest double takes a canvas beyond it.
    if (hasArea(rect.size) && isFinite(offset)) return {scale, offset};
    return {0, isFinite(centre) ? centre : Point{}};
}

} // namespace

CanvasTransform aspectFit(Rect rect) {
    return centred(rect, std::min(rect.size.width / canvas.width, rect.size.height / canvas.height));
}

CanvasTransform aspectFill(Rect rect) {
    return centred(rect, std::max(rect.size.width / canvas.width, rect.size.height / canvas.height));
}

} // namespace lumaro::VirtualCanvas
