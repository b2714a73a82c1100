// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/CutOutSession.h"

#include <tuple>
#include <utility>
#include <vector>

namespace lumaro {

struct CutOutSession::Opened {
    QImage picture;
    std::shared_ptr<CutOut> cut;
    QPainterPath outline;
};

void CutOutSession::open(std::string file, Cut then) {
    letGo();
    task_ = inBackground(
        background_,
        [file = std::move(file)] {
            Opened opened{.picture = QImage::fromData(QByteArrayView{file}), .cut = nullptr, .outline = {}};
            if (opened.picture.isNull()) return opened;
            opened.cut = std::make_shared<CutOut>(opened.picture);
            opened.cut->guess();
            opened.outline = opened.cut->outline();
            return opened;
        },
        [this, then = std::move(then)](Opened opened) mutable {
            const auto done = std::move(task_);
            picture_ = std::move(opened.picture);
            cut_ = std::move(opened.cut);
            outline_ = std::move(opened.outline);
            then_ = std::move(then);
            Q_EMIT changed();
            if (!isOpen()) Q_EMIT closed();
        });
    Q_EMIT changed();
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

void CutOutSession::undo() {
    add([](CutOut& cut) { cut.undo(); });
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
            return std::pair{cut->outline(), cut->undoable()};
        },
        [this](std::pair<QPainterPath, int> cut) {
            std::tie(outline_, undoable_) = std::move(cut);
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

void CutOutSession::letGo() {
    task_.reset();
    cut_.reset();
    gestures_.clear();
    picture_ = {};
    outline_ = {};
    undoable_ = 0;
    then_ = nullptr;
}

void CutOutSession::close() {
    letGo();
    Q_EMIT changed();
    Q_EMIT closed();
}

} // namespace lumaro
