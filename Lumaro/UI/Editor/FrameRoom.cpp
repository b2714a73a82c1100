// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/FrameRoom.h"

#include <QtGui/QTransform>

#include <algorithm>
#include <array>
#include <limits>

namespace lumaro {
namespace {

constexpr double handle = 36;    // the square that a handle takes the pointer in
constexpr double turnStalk = 18; // from the frame to the middle of the handle that turns
constexpr double gap = 8;

struct Frame {
    QRectF box; ///< around it as it is turned
    std::array<QRectF, 5> handles;
};

Frame turned(const QRectF& frame, double tilt) {
    const auto middle = frame.center();
    QTransform turn;
    turn.translate(middle.x(), middle.y()).rotate(tilt).translate(-middle.x(), -middle.y());
    const auto around = [&](QPointF at) {
        return QRectF{turn.map(at) - QPointF{handle, handle} / 2, QSizeF{handle, handle}};
    };
    return {turn.mapRect(frame),
            {around({middle.x(), frame.top() - turnStalk}), around(frame.topLeft()), around(frame.topRight()),
             around(frame.bottomLeft()), around(frame.bottomRight())}};
}

QRectF reachOf(const Frame& frame) {
    auto all = frame.box;
    for (const auto& one : frame.handles) all |= one;
    return all;
}

QPointF heldIn(const QRectF& room, QPointF corner, QSizeF size) {
    return {std::clamp(corner.x(), room.left(), std::max(room.left(), room.right() - size.width())),
            std::clamp(corner.y(), room.top(), std::max(room.top(), room.bottom() - size.height()))};
}

double shared(const QRectF& one, const QRectF& other) {
    const auto both = one & other;
    return both.width() * both.height();
}

/// Over the frame: a grid of places, the lower ones first.
QPointF leastCovering(const Frame& frame, QSizeF bar, const QRectF& room) {
    constexpr int across = 12;
    constexpr int down = 16;
    QPointF best = room.topLeft();
    double lowest = std::numeric_limits<double>::infinity();
    for (int row = down; row >= 0; --row) {
        for (int column = 0; column <= across; ++column) {
            const QPointF corner = heldIn(room,
                                          {room.left() + column * (room.width() - bar.width()) / across,
                                           room.top() + row * (room.height() - bar.height()) / down},
                                          bar);
            const QRectF place{corner, bar};
            double cost = shared(place, frame.box) + qAbs(place.center().x() - frame.box.center().x());
            for (const auto& grip : frame.handles) cost += 1000 * shared(place, grip);
            if (cost < lowest) {
                lowest = cost;
                best = corner;
            }
        }
    }
    return best;
}

} // namespace

QRectF FrameRoom::reach(QRectF frame, double tilt) {
    return reachOf(turned(frame, tilt));
}

QPointF FrameRoom::besides(QSizeF bar, QRectF frame, double tilt, QRectF room) {
    const auto there = turned(frame, tilt);
    const auto taken = reachOf(there);
    const QPointF middle = taken.center() - QPointF{bar.width(), bar.height()} / 2;
    for (const QPointF corner :
         {QPointF{middle.x(), taken.bottom() + gap}, QPointF{middle.x(), taken.top() - gap - bar.height()},
          QPointF{taken.right() + gap, middle.y()}, QPointF{taken.left() - gap - bar.width(), middle.y()}}) {
        const QRectF place{heldIn(room, corner, bar), bar};
        if (room.contains(place) && !place.intersects(taken)) return place.topLeft();
    }
    return leastCovering(there, bar, room);
}

bool FrameRoom::areNear(QRectF one, QRectF other, double distance) {
    return !one.isEmpty() && !other.isEmpty() &&
           one.adjusted(-distance, -distance, distance, distance).intersects(other);
}

} // namespace lumaro
