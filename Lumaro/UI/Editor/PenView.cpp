// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/PenView.h"

namespace lumaro {
namespace {

Point onCanvas(QPointF place) {
    return {place.x(), place.y()};
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
        pen_.begin(item != nullptr ? id : std::nullopt);
    }
}

void PenView::down(QPointF place, const QString& ink, double width) {
    static_cast<void>(pen_.down(onCanvas(place), {ink.toStdString(), width}));
}

void PenView::moveTo(QPointF place) {
    pen_.moveTo(onCanvas(place));
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
