// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/LassoLine.h"

#include "DesignSystem/Tokens.h"

#include <QtGui/QPainter>

#include <algorithm>

namespace lumaro {
namespace {

constexpr double threadWidth = 2.2;
constexpr double roundness = 14;

} // namespace

LassoLine::LassoLine(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

void LassoLine::paint(QPainter* painter) {
    const QRectF around = boundingRect().adjusted(threadWidth, threadWidth, -threadWidth, -threadWidth);
    if (around.width() <= 0 || around.height() <= 0) return;
    const QColor colour{inkTones[1].color};
    auto breath = colour;
    breath.setAlphaF(0.07F);
    const double radius = std::min({roundness, around.width() / 2, around.height() / 2});
    QPen stitches{colour, threadWidth, Qt::CustomDashLine, Qt::RoundCap, Qt::RoundJoin};
    stitches.setDashPattern({3.2, 2.6});
    painter->setPen(stitches);
    painter->setBrush(breath);
    painter->drawRoundedRect(around, radius, radius);
}

} // namespace lumaro
