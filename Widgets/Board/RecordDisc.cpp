// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Board/RecordDisc.h"

#include "Widgets/Items/ItemPainting.h"

#include <QtGui/QPainter>

namespace lumaro {
namespace {

constexpr double margin = 1; // pixels of the view, so that the edge is smooth when turned

} // namespace

RecordDisc::RecordDisc(QQuickItem* parent) : PictureItem(parent) {
    lay();
}

void RecordDisc::setFace(const ItemFace& face) {
    if (face_ == face) return;
    const auto* const before = face_.as<MusicFace>();
    const auto* const after = face.as<MusicFace>();
    const bool isSameDisc = before && after && before->cover == after->cover &&
                            (before->state == MusicFace::State::none) == (after->state == MusicFace::State::none);
    face_ = face;
    if (!isSameDisc) repaint();
    Q_EMIT faceChanged();
}

void RecordDisc::setNaturalSize(QSizeF size) {
    if (naturalSize_ == size) return;
    naturalSize_ = size;
    lay();
}

void RecordDisc::setPointScale(double scale) {
    if (pointScale_ == scale) return;
    pointScale_ = scale;
    lay();
}

bool RecordDisc::isTurning() const {
    const auto* const music = face_.as<MusicFace>();
    return music && music->state == MusicFace::State::playing;
}

double RecordDisc::discX() const {
    return recordRect(naturalSize_).left() * pointScale_ - margin;
}

double RecordDisc::discY() const {
    return recordRect(naturalSize_).top() * pointScale_ - margin;
}

void RecordDisc::lay() {
    const QSizeF size = recordRect(naturalSize_).size() * pointScale_;
    setImplicitSize(size.width() + 2 * margin, size.height() + 2 * margin);
    repaint();
    Q_EMIT placeChanged();
}

void RecordDisc::paint(QPainter& painter) {
    const auto* const music = face_.as<MusicFace>();
    if (!music) return;
    painter.translate(margin, margin);
    painter.scale(pointScale_, pointScale_);
    painter.translate(-recordRect(naturalSize_).topLeft());
    paintRecord(painter, *music, naturalSize_);
}

} // namespace lumaro
