// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Board/NoteSwatch.h"

#include "LumaroCore/BoardModel/NoteLook.h"
#include "Widgets/Items/Light.h"
#include "Widgets/Items/NoteLooks.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

namespace lumaro {
namespace {

template <class Names>
QStringList listOf(const Names& names) {
    QStringList list;
    for (const auto name : names) list.append(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
    return list;
}

} // namespace

NoteSwatch::NoteSwatch(QQuickItem* parent) : PictureItem(parent) {
    connect(this, &NoteSwatch::changed, this, [this] { repaint(); });
}

QStringList NoteSwatch::papers() {
    return listOf(notePapers);
}

QStringList NoteSwatch::pins() {
    return listOf(notePins);
}

QColor NoteSwatch::ink() const {
    const InLight light{isDark_ ? Appearance::dark : Appearance::light};
    return notePaper(paper_).colours.ink;
}

QColor NoteSwatch::smallInk() const {
    const InLight light{isDark_ ? Appearance::dark : Appearance::light};
    return smallInkOn(notePaper(paper_).colours);
}

void NoteSwatch::paint(QPainter& painter) {
    const InLight light{isDark_ ? Appearance::dark : Appearance::light};
    const auto paper = notePaper(paper_);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (!pin_.isEmpty()) {
        // A strip of tape is 96 points long with its shadow; a pin is seen larger.
        const bool isTape = pin_.startsWith(u"tape");
        const double points = isTape ? 100 : 34;
        painter.translate(width() / 2, height() / 2);
        painter.scale(width() / points, width() / points);
        painter.translate(-points / 2, isTape ? -2 : -13);
        return paintHolder(painter, {points, points}, pin_, paper.colours);
    }
    if (isWhole_) {
        QPainterPath sheet;
        sheet.addRect(QRectF{{0, 0}, size()});
        paintPaper(painter, sheet, paper.colours);
        return;
    }
    constexpr double side = 76;
    painter.scale(width() / side, width() / side);
    QPainterPath sheet{{1, 1}};
    sheet.lineTo(side - 1, 1);
    sheet.lineTo(side - 1, side - 1);
    if (paper.isTorn) {
        for (int i = 1; i <= 12; ++i) sheet.lineTo(side - 1 - (side - 2) * i / 12, side - (i % 2 == 0 ? 4 : 11));
    } else {
        sheet.lineTo(1, side - 1);
    }
    sheet.closeSubpath();
    paintPaper(painter, sheet, paper.colours);
    paintPrint(painter, sheet, {side, side}, paper);
}

} // namespace lumaro
