// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/PenView.h"

namespace lumaro {
namespace {

Point onCanvas(QPointF place) {
    return {place.x(), place.y()};
}

DoodleSession::Touch touch(double seconds, double pressure) {
    return {seconds, pressure >= 0 ? std::optional{pressure} : std::nullopt};
}

} // namespace

PenView::PenView(AppModel& app, QObject* parent) : QObject(parent), app_(app), pen_(app.editor().pen()) {
}

void PenView::begin(const QString& onItem) {
    const auto id = UUID::parse(onItem.toStdString());
    const auto* const item = id ? app_.board().find(*id) : nullptr;
    if (item != nullptr && item->kind() == ItemKind::doodle) {
        static_cast<void>(pen_.edit(*id));
    } else {
        static_cast<void>(pen_.begin(item != nullptr ? id : std::nullopt));
    }
}

void PenView::take(const QString& ink, double width) {
    taken_ = {ink.toStdString(), width};
}

void PenView::down(QPointF place, double seconds, double pressure) {
    static_cast<void>(pen_.down(onCanvas(place), taken_, touch(seconds, pressure)));
}

void PenView::moveTo(QPointF place, double seconds, double pressure) {
    pen_.moveTo(onCanvas(place), touch(seconds, pressure));
}

void PenView::up() {
    pen_.up();
}

void PenView::erase(QPointF from, QPointF to, double radius) {
    pen_.eraseAlong(onCanvas(from), onCanvas(to), radius);
}

void PenView::undo() {
    pen_.undo();
}

void PenView::redo() {
    pen_.redo();
}

void PenView::finish() {
    static_cast<void>(pen_.finish());
}

void PenView::letGo() {
    pen_.cancel();
}

} // namespace lumaro
