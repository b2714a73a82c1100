// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Geometry/CanvasTransform.h"

#include <QtCore/QObject>
#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtQml/qqmlregistration.h>

#include <algorithm>

namespace lumaro {

/// A `CanvasTransform` for QML: where the canvas lies in a view. A plain value.
class CanvasInView {
    Q_GADGET
    QML_VALUE_TYPE(canvasInView)
    Q_PROPERTY(double scale READ scale CONSTANT)

public:
    CanvasInView() = default;
    explicit CanvasInView(CanvasTransform transform) : transform_(transform) {}

    const CanvasTransform& transform() const { return transform_; }
    /// Points of the view for one of the canvas.
    double scale() const { return transform_.scale; }

    Q_INVOKABLE double viewX(double x) const { return transform_.viewPoint({x, 0}).x; }
    Q_INVOKABLE double viewY(double y) const { return transform_.viewPoint({0, y}).y; }
    Q_INVOKABLE QPointF canvasPoint(QPointF fromView) const {
        const auto [x, y] = transform_.virtualPoint({fromView.x(), fromView.y()});
        return {x, y};
    }

    // Where a view that the canvas covers cuts off a part of it, everything is drawn towards the middle so that it
    // stays in sight: by all of what is cut off at the edge, by nothing in the middle, and as far as it takes for the
    // whole of something that reaches so far from its centre. In points of the canvas.
    Q_INVOKABLE double inwardX(double x, double reach) const {
        return inward(x, reach, hidden().x, BoardSpec::canvasSize.width);
    }
    Q_INVOKABLE double inwardY(double y, double reach) const {
        return inward(y, reach, hidden().y, BoardSpec::canvasSize.height);
    }

    bool operator==(const CanvasInView&) const = default;

private:
    Point hidden() const { return transform_.virtualPoint({}); }
    static double inward(double place, double reach, double cutOff, double length) {
        const double nearest = cutOff + reach;
        const double furthest = length - cutOff - reach;
        if (nearest >= furthest) return length / 2 - place;
        const double drawn = place + std::max(0.0, cutOff) * (1 - 2 * place / length);
        return std::clamp(drawn, nearest, furthest) - place;
    }

    CanvasTransform transform_;
};

/// The ways to lay the canvas into a part of a view, for QML.
class CanvasLayout final : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(VirtualCanvas)
    QML_SINGLETON

public:
    /// All of it, as large as there is room.
    Q_INVOKABLE static lumaro::CanvasInView aspectFit(QRectF area) {
        return CanvasInView{VirtualCanvas::aspectFit(rect(area))};
    }
    /// Just large enough to leave nothing bare. In a view of quite another shape than the canvas, `aspectFit`: covered,
    /// things would lie in a heap.
    Q_INVOKABLE static lumaro::CanvasInView aspectFill(QRectF area) {
        const auto whole = VirtualCanvas::aspectFit(rect(area));
        const auto filled = VirtualCanvas::aspectFill(rect(area));
        return CanvasInView{filled.scale <= whole.scale * mostFill ? filled : whole};
    }

private:
    /// In parts of `aspectFit`: covers screens from 5 to 4 to beyond 18 to 9.
    static constexpr double mostFill = 1.3;

    static Rect rect(QRectF area) { return {{area.x(), area.y()}, {area.width(), area.height()}}; }
};

} // namespace lumaro
