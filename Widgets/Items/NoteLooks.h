// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Items/Paper.h"

#include <QtCore/QSizeF>
#include <QtCore/QString>
#include <QtGui/QColor>

#include <array>
#include <cstdint>

class QPainter;
class QPainterPath;

namespace lumaro {

// What the names of papers, pins and tapes look like (`LumaroCore/BoardModel/NoteLook.h` lists them), in the light in
// which this thread paints. A name that is not known looks like the default.

/// A note's paper: its colours, and what sets it apart from a plain one.
struct NotePaper {
    enum class Print : std::uint8_t { none, lines, squares, dots };

    PaperColours colours;
    Print print = Print::none;
    bool isTorn = false; ///< at its lower edge
};

NotePaper notePaper(const QString& name);

/// The note's paper after a part of its day, 0 to 1: paler, and its ink with it, still to be read.
NotePaper faded(NotePaper paper, double fade);

/// Everything that letters on the paper stand on.
std::array<QColor, 3> groundsOf(const PaperColours& paper);

/// An ink as a note stores it, on this paper: one of `textInks`, of the doodles' inks, or "#rrggbb", made darker or
/// lighter until it can be read. Anything else is the paper's own ink.
QColor noteInk(const QString& stored, const PaperColours& paper);
/// Of links.
QColor linkInkOn(const PaperColours& paper);
/// Of the small print on the paper.
QColor smallInkOn(const PaperColours& paper);

/// What is printed on the sheet of that outline.
void paintPrint(QPainter& painter, const QPainterPath& outline, QSizeF size, const NotePaper& paper);

/// The pin or the strip of tape that holds a note of that size up.
void paintHolder(QPainter& painter, QSizeF size, const QString& name, const PaperColours& paper);

} // namespace lumaro
