// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/NoteRender/PMNode.h"
#include "Widgets/Items/Paper.h"

#include <QtCore/QRectF>
#include <QtCore/QSizeF>
#include <QtGui/QColor>

class QPainter;
class QString;
class QTextCharFormat;
class QTextDocument;

namespace lumaro {

// A note's text between its stored document and one that people write in. Every child of the stored `doc` is one block.
// A block that still reads as its child did is written back as that child, bit for bit; what it holds that this version
// does not know, and whether its empty lists were there, comes back with it.

inline constexpr double smallestNoteText = 15; ///< points of the canvas
inline constexpr double largestNoteText = 84;

struct NoteStyle {
    PaperColours paper{};
    double fontSize = largestNoteText;
};

/// Makes `document` show `note`, and forgets its undo steps. Works for documents of any shape.
void fillDocument(QTextDocument& document, const PMNode& note, const NoteStyle& style);

/// The other way, for a document that was filled with `original` and then perhaps edited. A paragraph that was split
/// keeps its attributes in both halves; text keeps the marks of this version's marks and of others. A child with more
/// than text in it becomes a paragraph of its text once it is edited.
PMNode documentNode(const QTextDocument& document, const PMNode& original);

/// The marks of characters, for the composer's buttons.
bool hasMark(const QTextCharFormat& format, PMMark::Kind mark);
/// Adds or takes off a mark; a text colour is set with `setTextColor`.
void setMark(QTextCharFormat& format, PMMark::Kind mark, bool isOn);
/// The colour as it is stored, empty without one.
QString textColor(const QTextCharFormat& format);
/// Colours as they are stored: "#rrggbb", or a name; an empty one is the paper's own ink.
void setTextColor(QTextCharFormat& format, const QString& stored, const PaperColours& paper);

/// The largest whole size, from the smallest to the largest, at which the note fits the box. No word is broken for a
/// larger size, as long as it stays readable.
double fittedFontSize(const PMNode& note, QSizeF box);

/// The note in the hand, fitted into `box` and centred in its height. What does not fit even at the smallest size fades
/// out in the last whole line. Links are underlined, in an ink of their own.
void paintNoteText(QPainter& painter, const PMNode& note, const QRectF& box, const PaperColours& paper);

/// Makes `document` show the note to be read: links apart, emoji whole, in lines of that width.
void layForReading(QTextDocument& document, const PMNode& note, const NoteStyle& style, double width);

/// Whether a part of the note is not seen in the box.
bool overflows(const PMNode& note, QSizeF box);

} // namespace lumaro
