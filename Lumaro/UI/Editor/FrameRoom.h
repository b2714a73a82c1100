// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QSizeF>
#include <QtQml/qqmlregistration.h>

namespace lumaro {

/// What the frame of a selected item takes of the window with its handles, and where there is room beside it. The frame
/// is given as it lies before it is turned about its middle by `tilt` degrees. For QML; in points of the view.
class FrameRoom final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// The box around the frame and its handles.
    Q_INVOKABLE static QRectF reach(QRectF frame, double tilt);
    /// The corner of a bar of that size within `room`: under the frame, else over it, else beside it. Where a frame
    /// leaves room on no side, the place over it that covers no handle, or the least of them.
    Q_INVOKABLE static QPointF besides(QSizeF bar, QRectF frame, double tilt, QRectF room);
    /// Whether two areas come nearer to each other than `distance`; empty ones never do.
    Q_INVOKABLE static bool areNear(QRectF one, QRectF other, double distance);
};

} // namespace lumaro
