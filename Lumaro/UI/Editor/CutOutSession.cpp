// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/CutOutSession.h"

#include <tuple>
#include <utility>
#include <vector>

namespace lumaro {

void CutOutSession::open(std::string file, Cut then) {
    close();
    task_ = inBackground(
        background_,
        [file = std::move(file)] {
            auto picture = QImage::fromData(QByteArrayView{file});
            auto cut = picture.isNull() ? nullptr : std::make_shared<CutOut>(picture);
            return std::pair{std::move(picture), std::move(cut)};
        },
        [this, then = std::move(then)](auto opened) mutable {
            const auto done = std::move(task_);
            std::tie(picture_, cut_) = std::move(opened);
            then_ = std::move(then);
            Q_EMIT changed();
        });
}

void CutOutSession::frame(double left, double top, double right, double bottom) {
    const QRectF frame{QPointF{left * picture_.width(), top * picture_.height()},
                       QPointF{right * picture_.width(), bottom * picture_.height()}};
    add([frame = frame.normalized()](CutOut& cut) { cut.setFrame(frame); });
}

void CutOutSession::scribble(const QList<double>& places, double width, bool isKept) {
    std::vector<QPointF> points;
    for (qsizetype i = 0; i + 1 < places.size(); i += 2) {
        points.emplace_back(places[i] * picture_.width(), places[i + 1] * picture_.height());
    }
    const auto what = isKept ? CutOut::Scribble::keep : CutOut::Scribble::drop;
    add([points = std::move(points), width = width * picture_.width(), what](CutOut& cut) {
        cut.scribble(points, width, what);
    });
}

void CutOutSession::add(Gesture gesture) {
    if (!cut_) return;
    gestures_.push_back(std::move(gesture));
    if (!task_) workOff();
}

void CutOutSession::workOff() {
    task_ = inBackground(
        background_,
        [cut = cut_, gestures = std::exchange(gestures_, {})] {
            for (const auto& gesture : gestures) gesture(*cut);
            return cut->outline();
        },
        [this](QPainterPath outline) {
            outline_ = std::move(outline);
            const auto done = std::move(task_);
            if (!gestures_.empty()) workOff();
            Q_EMIT changed();
        });
    Q_EMIT changed();
}

void CutOutSession::take() {
    if (!cut_ || task_) return;
    task_ = inBackground(
        background_, [cut = cut_] { return cut->sticker(); },
        [this](QImage sticker) {
            const auto done = std::move(task_);
            auto then = std::move(then_);
            close();
            if (then && !sticker.isNull()) then(std::move(sticker));
        });
    Q_EMIT changed();
}

void CutOutSession::close() {
    task_.reset();
    cut_.reset();
    gestures_.clear();
    picture_ = {};
    outline_ = {};
    then_ = nullptr;
    Q_EMIT changed();
}

} // namespace lumaro
