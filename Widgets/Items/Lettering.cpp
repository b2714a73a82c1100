// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Lettering.h"

#include "DesignSystem/Fonts.h"
#include "Widgets/Items/Emoji.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>
#include <QtGui/QTextLayout>

#include <algorithm>
#include <cmath>

namespace lumaro {
namespace {

double digitWidth(const QFontMetricsF& metrics) {
    double widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit) widest = std::max(widest, metrics.horizontalAdvance(digit));
    return widest;
}

double lineTop(const QRectF& rect, Qt::Alignment alignment, double height) {
    if (alignment & Qt::AlignBottom) return rect.bottom() - height;
    if (alignment & Qt::AlignVCenter) return rect.top() + (rect.height() - height) / 2;
    return rect.top();
}

} // namespace

QFont hand(double size, QFont::Weight weight) {
    QFont font = handFont(size, weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QFont sans(double size, QFont::Weight weight) {
    QFont font = sansFont(size, weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QFont fitted(QFont font, const QString& text, double width, double least) {
    while (font.pixelSize() > least && QFontMetricsF{font}.horizontalAdvance(text) > width) {
        font.setPixelSize(font.pixelSize() - 1);
    }
    return font;
}

namespace {

// One line whose keycaps come from the font of the emoji.
void drawWithKeycaps(QPainter& painter, const QRectF& rect, Qt::Alignment alignment, const QString& text,
                     const QFont& font) {
    QTextLayout layout{text, font};
    QList<QTextLayout::FormatRange> formats;
    for (const auto& [start, length] : keycapsIn(text)) {
        QTextCharFormat format;
        format.setFontFamilies({emojiFamily});
        formats.append({static_cast<int>(start), static_cast<int>(length), format});
    }
    layout.setFormats(formats);
    layout.beginLayout();
    auto line = layout.createLine();
    layout.endLayout();
    const double spare = rect.width() - line.naturalTextWidth();
    const double left = alignment & Qt::AlignRight ? spare : alignment & Qt::AlignHCenter ? spare / 2 : 0;
    layout.draw(&painter, {rect.left() + left, lineTop(rect, alignment, line.height())});
}

} // namespace

void drawLine(QPainter& painter, const QRectF& rect, Qt::Alignment alignment, const QString& text, const QFont& font) {
    const QFontMetricsF metrics{font};
    painter.setFont(font);
    const auto shown = metrics.elidedText(withJoinedEmoji(text), Qt::ElideRight, rect.width());
    if (!keycapsIn(shown).empty()) return drawWithKeycaps(painter, rect, alignment, shown, font);
    // A flag that is not given would be "left", which a right-to-left text turns round.
    painter.drawText(rect, static_cast<int>(alignment) | Qt::TextSingleLine | Qt::TextDontClip, shown);
}

namespace {

// The lines that `text` breaks into; the rest of it is left on the last.
QStringList broken(const QString& text, const QFont& font, double width, int lines) {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QTextLayout layout{text, font};
    layout.setTextOption(option);
    QStringList parts;
    layout.beginLayout();
    while (parts.size() < lines) {
        auto line = layout.createLine();
        if (!line.isValid()) break;
        line.setLineWidth(width);
        const bool isLast = parts.size() + 1 == lines;
        parts.append((isLast ? text.mid(line.textStart()) : text.mid(line.textStart(), line.textLength())).trimmed());
    }
    layout.endLayout();
    return parts;
}

bool fits(const QStringList& lines, const QFont& font, double width) {
    const QFontMetricsF metrics{font};
    return std::ranges::all_of(lines, [&](const QString& line) { return metrics.horizontalAdvance(line) <= width; });
}

} // namespace

void drawLines(QPainter& painter, const QRectF& rect, Qt::Alignment alignment, const QString& text, QFont font,
               int lines) {
    const int least = std::max(1, font.pixelSize() * 7 / 10);
    auto parts = broken(text, font, rect.width(), lines);
    while (font.pixelSize() > least && !fits(parts, font, rect.width())) {
        font.setPixelSize(font.pixelSize() - 1);
        parts = broken(text, font, rect.width(), lines);
    }
    const double height = QFontMetricsF{font}.height() * 0.86;
    QRectF place{rect.left(), lineTop(rect, alignment, height * static_cast<double>(parts.size())), rect.width(),
                 height};
    for (const auto& line : parts) {
        drawLine(painter, place, (alignment & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter, line, font);
        place.translate(0, height);
    }
}

double figuresWidth(const QString& text, const QFont& font) {
    const QFontMetricsF metrics{font};
    const double digit = digitWidth(metrics);
    double width = 0;
    for (const QChar character : text) width += character.isDigit() ? digit : metrics.horizontalAdvance(character);
    return width;
}

void drawFigures(QPainter& painter, QPointF baseline, const QString& text, const QFont& font) {
    const QFontMetricsF metrics{font};
    const double digit = digitWidth(metrics);
    painter.setFont(font);
    for (const QChar character : text) {
        const double own = metrics.horizontalAdvance(character);
        const double place = character.isDigit() ? digit : own;
        painter.drawText(baseline + QPointF{(place - own) / 2, 0}, QString{character});
        baseline.rx() += place;
    }
}

} // namespace lumaro
