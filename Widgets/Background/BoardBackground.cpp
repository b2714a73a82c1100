// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Background/BoardBackground.h"

#include "Widgets/Background/BackgroundPainting.h"

namespace lumaro {

BoardBackground::BoardBackground(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setOpaquePainting(true);
}

void BoardBackground::setBackground(const QString& background) {
    if (background_ == background) return;
    background_ = background;
    update();
    Q_EMIT backgroundChanged();
}

void BoardBackground::setDark(bool isDark) {
    if (isDark_ == isDark) return;
    isDark_ = isDark;
    update();
    Q_EMIT darkChanged();
}

void BoardBackground::paint(QPainter* painter) {
    paintBackground(*painter, size(), background_, isDark_ ? Surroundings::dark : Surroundings::light);
}

} // namespace lumaro
