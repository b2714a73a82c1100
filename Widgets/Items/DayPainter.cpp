// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Words.h"
#include "Widgets/Items/Lettering.h"
#include "Widgets/Items/Painters.h"
#include "Widgets/Items/Palette.h"
#include "Widgets/Items/Paper.h"
#include "Widgets/Items/Shadow.h"

#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <cmath>

namespace lumaro {
namespace {

constexpr double head = 38;
constexpr double inset = 18;

// The upper edge is torn from the page before; the lower right corner stands off a little.
QPainterPath pageOutline(QSizeF size) {
    QPainterPath page{{0, 4}};
    for (int i = 1; i <= 60; ++i) {
        const double tear = 2.2 + 1.5 * std::sin(i * 2.1) + 1.0 * std::sin(i * 5.3);
        page.lineTo(size.width() * i / 60, std::max(0.0, tear));
    }
    page.lineTo(size.width(), size.height() - 7);
    page.quadTo({size.width() - 1, size.height() - 4}, {size.width() - 8, size.height() - 1.5});
    page.lineTo(3, size.height());
    page.quadTo({0, size.height()}, {0, size.height() - 3});
    page.closeSubpath();
    return page;
}

void paintPagesBelow(QPainter& painter, QSizeF size) {
    for (const double step : {5.0, 2.5}) {
        QPainterPath page;
        page.addRoundedRect(QRectF{step * 0.5, step + 6, size.width() - step, size.height() - 6}, 3, 3);
        if (step == 5.0) paintShadow(painter, page);
        painter.fillPath(page, lit(step == 5.0 ? QColor{228, 214, 190} : QColor{242, 231, 211}, 0.78));
        paintEdge(painter, page, 0.7);
    }
}

void paintHead(QPainter& painter, const QPainterPath& page, const DayFace& face, QSizeF size) {
    QPainterPath band;
    band.addRect(0, 0, size.width(), head);
    QLinearGradient red{0, 0, size.width(), head};
    red.setColorAt(0, lit({190, 79, 59}, 0.22));
    red.setColorAt(1, lit({168, 63, 47}, 0.22));
    painter.fillPath(page.intersected(band), red);
    paintGrain(painter, page.intersected(band), 1.1);
    painter.fillRect(QRectF{0, head, size.width(), 3}, faint(tint::umber, 0.09));
    painter.fillRect(QRectF{0, head - 1, size.width(), 1}, faint(tint::light, 0.30));
    painter.setPen(QColor{255, 247, 236});
    const QRectF line{inset, 5, size.width() - 2 * inset, head - 6};
    drawLine(painter, line, Qt::AlignVCenter | Qt::AlignLeft, face.weekday, sans(16, QFont::ExtraBold));
    drawLine(painter, line, Qt::AlignVCenter | Qt::AlignRight, face.month, sans(16, QFont::DemiBold));
}

void paintDate(QPainter& painter, const DayFace& face, QSizeF size) {
    painter.setPen(tint::ink);
    const QFont font = sans(56, QFont::ExtraBold);
    drawFigures(painter, {inset - 2, head + 53}, face.day, font);
    const double right = inset + figuresWidth(face.day, font) + 10;
    painter.setPen(tint::coralInk);
    drawLines(painter, {right, head + 11, size.width() - right - inset, 48}, Qt::AlignVCenter | Qt::AlignRight,
              face.whose, hand(26, QFont::Bold), 2);
}

void paintEvents(QPainter& painter, const DayFace& face, QSizeF size) {
    constexpr double step = 25;
    double y = head + 68;
    painter.fillRect(QRectF{inset, y, size.width() - 2 * inset, 1}, faint(tint::umber, 0.12));
    y += 5;
    const double most = std::floor((size.height() - y - (face.more > 0 ? 24 : 6)) / step);
    const auto count = std::min(face.events.size(), static_cast<std::size_t>(most));
    for (std::size_t i = 0; i < count; ++i, y += step) {
        const auto& event = face.events[i];
        painter.setPen(tint::softInk);
        drawLine(painter, {inset, y, 48, step}, Qt::AlignVCenter | Qt::AlignLeft, event.time,
                 fitted(sans(14, QFont::DemiBold), event.time, 46, 10));
        painter.setPen(tint::ink);
        drawLine(painter, {inset + 52, y - 1, size.width() - 2 * inset - 52, step}, Qt::AlignVCenter | Qt::AlignLeft,
                 event.title, hand(24));
    }
    const auto hidden = face.more + static_cast<int>(face.events.size() - count);
    if (hidden > 0) {
        painter.setPen(tint::coralInk);
        drawLine(painter, {inset, y - 1, size.width() - 2 * inset, 22}, Qt::AlignVCenter | Qt::AlignRight,
                 Words::tr("and %n more", nullptr, hidden), hand(21));
    }
    if (face.events.empty()) {
        painter.setPen(tint::softInk);
        drawLines(painter, {inset, y, size.width() - 2 * inset, size.height() - y - 12}, Qt::AlignCenter, face.words,
                  hand(27), 3);
    }
}

} // namespace

void paintFace(QPainter& painter, const DayFace& face, QSizeF size) {
    const auto page = pageOutline(size);
    paintPagesBelow(painter, size);
    paintPaper(painter, page, cardPaper());
    paintHead(painter, page, face, size);
    if (face.day.isEmpty()) {
        painter.setPen(tint::softInk);
        drawLines(painter, {inset, head + 8, size.width() - 2 * inset, size.height() - head - 20}, Qt::AlignCenter,
                  face.words, hand(29), 4);
        return;
    }
    paintDate(painter, face, size);
    paintEvents(painter, face, size);
}

} // namespace lumaro
