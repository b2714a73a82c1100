// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Board/FacePicture.h"

#include "Widgets/Items/Light.h"

#include <utility>

namespace lumaro {

void FacePicture::setFace(const ItemFace& face) {
    if (face_ == face) return;
    const auto before = std::exchange(face_, face);
    if (!looksSame(before, face_)) layAnew();
    Q_EMIT faceChanged();
}

void FacePicture::setNaturalSize(QSizeF size) {
    if (naturalSize_ == size) return;
    naturalSize_ = size;
    layAnew();
}

void FacePicture::setPointScale(double scale) {
    if (pointScale_ == scale) return;
    pointScale_ = scale;
    layAnew();
}

void FacePicture::setDark(bool isDark) {
    if (isDark_ == isDark) return;
    isDark_ = isDark;
    repaint();
    Q_EMIT darkChanged();
}

void FacePicture::paint(QPainter& painter) {
    const InLight light{isDark_ ? Appearance::dark : Appearance::light};
    paintLit(painter);
}

bool FacePicture::isReady() {
    if (!pictureWithin().isAsleep()) return true;
    // The scene may be synchronised on a thread of its own.
    QMetaObject::invokeMethod(this, [this] { pictureWithin().want(); }, Qt::QueuedConnection);
    return false;
}

void FacePicture::layAnew() {
    lay();
    repaint();
    Q_EMIT placeChanged();
}

} // namespace lumaro
