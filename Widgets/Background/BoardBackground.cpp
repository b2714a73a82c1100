// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Background/BoardBackground.h"

#include "Widgets/Background/BackgroundPainting.h"

namespace lumaro {

BoardBackground::BoardBackground(QQuickItem* parent) : PictureItem(parent, Cover::opaque) {
}

void BoardBackground::setBackground(const QString& background) {
    if (background_ == background) return;
    background_ = background;
    repaint();
    Q_EMIT backgroundChanged();
}

void BoardBackground::setDark(bool isDark) {
    if (isDark_ == isDark) return;
    isDark_ = isDark;
    repaint();
    Q_EMIT darkChanged();
}

void BoardBackground::paint(QPainter& painter) {
    paintBackground(painter, size(), background_, isDark_ ? Appearance::dark : Appearance::light);
}

} // namespace lumaro
