// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Fonts.h"
#include "Widgets/Items/Emoji.h"
#include "Widgets/Items/Lettering.h"
#include "Widgets/Items/NoteLinks.h"
#include "Widgets/Items/NoteLooks.h"
#include "Widgets/Items/NoteText.h"

#include <QtGui/QAbstractTextDocumentLayout>
#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtGui/QTextLayout>

#include <algorithm>
#include <cmath>
#include <functional>

namespace lumaro {
namespace {

// Down to this size a word is rather set smaller than broken.
constexpr double smallestUnbroken = 24;
// Lines that people broke themselves are kept whole, when that makes the text no smaller than this part.
constexpr double smallestWhole = 0.7;

void setWrapping(QTextDocument& document, QTextOption::WrapMode mode) {
    auto option = document.defaultTextOption();
    option.setWrapMode(mode);
    document.setDefaultTextOption(option);
}

void lay(QTextDocument& document, double fontSize, double width) {
    document.setDefaultFont(hand(fontSize));
    document.setTextWidth(width);
}

double largestSize(double least, double most, const std::function<bool(double)>& fits) {
    while (least < most) {
        const double middle = std::ceil((least + most) / 2);
        if (fits(middle))
            least = middle;
        else
            most = middle - 1;
    }
    return least;
}

double fittedSize(QTextDocument& document, QSizeF box) {
    const auto fits = [&](double size) {
        lay(document, size, box.width());
        return document.size().height() <= box.height() && document.idealWidth() <= box.width() + 0.5;
    };
    setWrapping(document, QTextOption::WordWrap);
    const double wrapped = largestSize(smallestUnbroken, largestNoteText, fits);
    if (!fits(wrapped)) {
        setWrapping(document, QTextOption::WrapAtWordBoundaryOrAnywhere);
        return largestSize(smallestNoteText, smallestUnbroken, fits);
    }
    setWrapping(document, QTextOption::NoWrap);
    const double whole = largestSize(smallestUnbroken, wrapped, fits);
    if (whole >= wrapped * smallestWhole && fits(whole)) return whole;
    setWrapping(document, QTextOption::WordWrap);
    return wrapped;
}

// As `withJoinedEmoji`, in place, so that every character keeps its format.
void joinEmoji(QTextDocument& document) {
    for (auto block = document.firstBlock(); block.isValid(); block = block.next()) {
        QTextCursor cursor{block};
        const auto text = block.text();
        const auto joined = withJoinedEmoji(text);
        for (qsizetype from = text.size(), to = joined.size(); from > to;) {
            --from;
            if (to > 0 && text[from] == joined[to - 1]) {
                --to;
                continue;
            }
            // Not `deleteChar`, which takes all that people count as one.
            cursor.setPosition(block.position() + static_cast<int>(from));
            cursor.setPosition(cursor.position() + 1, QTextCursor::KeepAnchor);
            cursor.removeSelectedText();
        }
        for (const auto& [start, length] : keycapsIn(block.text())) {
            QTextCharFormat format;
            format.setFontFamilies({emojiFamily});
            cursor.setPosition(block.position() + static_cast<int>(start));
            cursor.setPosition(cursor.position() + static_cast<int>(length), QTextCursor::KeepAnchor);
            cursor.mergeCharFormat(format);
        }
    }
}

void markLinks(QTextDocument& document, const PaperColours& paper) {
    for (auto block = document.firstBlock(); block.isValid(); block = block.next()) {
        for (const auto& link : linksIn(block.text())) {
            QTextCharFormat format;
            format.setFontUnderline(true);
            format.setForeground(linkInkOn(paper));
            format.setAnchor(true);
            format.setAnchorHref(link.url.toString(QUrl::FullyEncoded));
            QTextCursor cursor{block};
            cursor.setPosition(block.position() + static_cast<int>(link.start));
            cursor.setPosition(cursor.position() + static_cast<int>(link.length), QTextCursor::KeepAnchor);
            cursor.mergeCharFormat(format);
        }
    }
}

QTextDocument& prepared(QTextDocument& document, const PMNode& note, const NoteStyle& style) {
    document.setUndoRedoEnabled(false);
    document.setDocumentMargin(0);
    fillDocument(document, note, style);
    joinEmoji(document);
    markLinks(document, style.paper);
    return document;
}

// The last line that lies wholly above `height`, in the document's coordinates.
QRectF lastWholeLine(const QTextDocument& document, double height) {
    QRectF last;
    for (auto block = document.firstBlock(); block.isValid(); block = block.next()) {
        const auto* layout = block.layout();
        for (int i = 0; i < layout->lineCount(); ++i) {
            const QRectF line = layout->lineAt(i).naturalTextRect().translated(layout->position());
            if (line.bottom() > height) return last;
            last = line;
        }
    }
    return last;
}

// Drawn apart, so that the end can fade to nothing over whatever paper lies below.
void paintFading(QPainter& painter, const QTextDocument& document, const QRectF& box, const QColor& ink) {
    const QRectF last = lastWholeLine(document, box.height());
    const auto& matrix = painter.deviceTransform();
    const double density = std::max(1.0, std::sqrt(std::abs(matrix.determinant())));
    QImage text{(box.size() * density).toSize(), QImage::Format_ARGB32_Premultiplied};
    text.fill(Qt::transparent);
    QPainter writing{&text};
    writing.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    writing.scale(density, density);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, ink);
    context.clip = QRectF{0, 0, box.width(), last.bottom()};
    writing.setClipRect(context.clip);
    document.documentLayout()->draw(&writing, context);
    writing.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    QLinearGradient end{box.width() * 0.45, 0, box.width() - 22, 0};
    end.setColorAt(0, Qt::transparent);
    end.setColorAt(1, Qt::white);
    writing.fillRect(QRectF{0, last.top(), box.width(), last.height()}, end);
    writing.setCompositionMode(QPainter::CompositionMode_SourceOver);
    writing.setPen(ink);
    writing.setFont(hand(22, QFont::Bold));
    writing.drawText(QRectF{0, last.top(), box.width(), last.height()}, Qt::AlignRight | Qt::AlignVCenter,
                     QString{QChar{0x2026}});
    writing.end();
    painter.drawImage(box, text);
}

} // namespace

double fittedFontSize(const PMNode& note, QSizeF box) {
    QTextDocument document;
    return fittedSize(prepared(document, note, {}), box);
}

bool overflows(const PMNode& note, QSizeF box) {
    QTextDocument document;
    prepared(document, note, {});
    lay(document, fittedSize(document, box), box.width());
    return document.size().height() > box.height();
}

void layForReading(QTextDocument& document, const PMNode& note, const NoteStyle& style, double width) {
    prepared(document, note, style);
    setWrapping(document, QTextOption::WrapAtWordBoundaryOrAnywhere);
    lay(document, style.fontSize, width);
}

void paintNoteText(QPainter& painter, const PMNode& note, const QRectF& box, const PaperColours& paper) {
    const QColor& ink = paper.ink;
    QTextDocument document;
    prepared(document, note, {.paper = paper});
    lay(document, fittedSize(document, box.size()), box.width());
    const double spare = box.height() - document.size().height();
    if (spare < 0) return paintFading(painter, document, box, ink);
    painter.save();
    painter.translate(box.left(), box.top() + spare / 2);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, ink);
    document.documentLayout()->draw(&painter, context);
    painter.restore();
}

} // namespace lumaro
