// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Thread/RedThread.h"

#include "Widgets/Thread/ThreadPainting.h"

namespace lumaro {

template <class Value>
void RedThread::set(Value& place, Value value) {
    if (place == value) return;
    place = value;
    repaint();
    Q_EMIT changed();
}

void RedThread::setTied(bool isTied) {
    set(isTied_, isTied);
}

void RedThread::setProgress(double progress) {
    set(progress_, progress);
}

void RedThread::setPointScale(double scale) {
    set(pointScale_, scale);
}

void RedThread::paint(QPainter& painter) {
    if (isTied_) paintThread(painter, size(), pointScale_, progress_);
}

} // namespace lumaro
