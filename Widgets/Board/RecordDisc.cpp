// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Board/RecordDisc.h"

#include "Widgets/Items/ItemPainting.h"

#include <QtGui/QPainter>

#include <utility>

namespace lumaro {
namespace {

constexpr double margin = 1; // pixels of the view, so that the edge is smooth when turned

} // namespace

RecordDisc::RecordDisc(QQuickItem* parent) : FacePicture(parent) {
    connect(this, &FacePicture::faceChanged, this, &RecordDisc::listen);
}

void RecordDisc::listen() {
    const auto* const music = face().as<MusicFace>();
    std::optional<Song> song;
    if (music && music->state != MusicFace::State::none) song = Song{music->title, music->artist};
    const auto before = std::exchange(song_, std::move(song));
    if (before && song_ && *before != *song_ && isTurning()) Q_EMIT songBegan();
}

bool RecordDisc::looksSame(const ItemFace& before, const ItemFace& after) const {
    const auto* const was = before.as<MusicFace>();
    const auto* const is = after.as<MusicFace>();
    return was && is && was->cover == is->cover &&
           (was->state == MusicFace::State::none) == (is->state == MusicFace::State::none);
}

bool RecordDisc::isTurning() const {
    const auto* const music = face().as<MusicFace>();
    return music && music->state == MusicFace::State::playing;
}

double RecordDisc::discX() const {
    return recordRect(naturalSize()).left() * pointScale() - margin;
}

double RecordDisc::discY() const {
    return recordRect(naturalSize()).top() * pointScale() - margin;
}

void RecordDisc::lay() {
    const QSizeF size = recordRect(naturalSize()).size() * pointScale();
    setImplicitSize(size.width() + 2 * margin, size.height() + 2 * margin);
}

void RecordDisc::paintLit(QPainter& painter) {
    const auto* const music = face().as<MusicFace>();
    if (!music) return;
    painter.translate(margin, margin);
    painter.scale(pointScale(), pointScale());
    painter.translate(-recordRect(naturalSize()).topLeft());
    paintRecord(painter, *music, naturalSize());
}

} // namespace lumaro
