// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/NoteText.h"

#include "LumaroCore/Support/EnumNames.h"
#include "Widgets/Items/Lettering.h"
#include "Widgets/Items/NoteLooks.h"

#include <QtGui/QTextBlock>
#include <QtGui/QTextCharFormat>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtGui/QTextFragment>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace lumaro {

/// The marks that characters came with, so that what this version does not know goes back with them.
struct StoredMarks {
    std::optional<std::vector<PMMark>> list;

    bool operator==(const StoredMarks&) const = default;
};

} // namespace lumaro

Q_DECLARE_METATYPE(lumaro::StoredMarks)

namespace lumaro {
namespace {

using Kind = PMMark::Kind;

constexpr int marksProperty = QTextFormat::UserProperty + 1;  // of characters: `StoredMarks`
constexpr int colourProperty = QTextFormat::UserProperty + 2; // of characters: the colour as it is stored
constexpr int childProperty = QTextFormat::UserProperty + 3;  // of blocks: which child of the document it shows

constexpr std::array toggles{Kind::bold, Kind::italic, Kind::underline, Kind::strike};

/// Characters with the same marks.
struct Run {
    QString text;
    std::optional<std::vector<PMMark>> marks;

    bool operator==(const Run&) const = default;
};
using Runs = std::vector<Run>;

void append(Runs& runs, Run run) {
    if (run.text.isEmpty()) return;
    if (!runs.empty() && runs.back().marks == run.marks)
        runs.back().text += run.text;
    else
        runs.push_back(std::move(run));
}

// What a text document would take for the end of a block, or for a sign of its own, is shown as a line break or as the
// sign for what cannot be shown.
QString shown(const std::string& text) {
    QString characters = QString::fromStdString(text);
    for (QChar& character : characters) {
        switch (character.unicode()) {
        case u'\n':
        case u'\r':
        case QChar::ParagraphSeparator: character = QChar::LineSeparator; break;
        case u'\0':
        case QChar::ObjectReplacementCharacter:
        case 0xFDD0: // the beginning and the end of a frame in a text document
        case 0xFDD1: character = QChar::ReplacementCharacter; break;
        default: break;
        }
    }
    return characters;
}

// Nodes within a child: texts and, of what this version does not know, its plain text.
Runs runsOf(const PMNode& child) {
    Runs runs;
    if (child.kind() == PMNode::Kind::text || !child.content) {
        append(runs, {shown(child.plainText()), child.marks});
        return runs;
    }
    for (const auto& node : *child.content) append(runs, {shown(node.plainText()), node.marks});
    return runs;
}

const PMMark* find(const std::optional<std::vector<PMMark>>& marks, Kind kind) {
    if (!marks) return nullptr;
    const auto found = std::ranges::find(*marks, std::optional{kind}, &PMMark::kind);
    return found == marks->end() ? nullptr : &*found;
}

std::string colourOf(const std::optional<std::vector<PMMark>>& marks) {
    const auto* mark = find(marks, Kind::textColor);
    const auto* stored = mark ? mark->colorHex() : nullptr;
    return stored ? *stored : std::string{};
}

QTextCharFormat formatOf(const Run& run, const PaperColours& paper) {
    QTextCharFormat format;
    for (const auto kind : toggles) {
        if (find(run.marks, kind)) setMark(format, kind, true);
    }
    const auto colour = colourOf(run.marks);
    if (!colour.empty()) setTextColor(format, QString::fromStdString(colour), paper);
    format.setProperty(marksProperty, QVariant::fromValue(StoredMarks{run.marks}));
    return format;
}

void drop(std::vector<PMMark>& marks, Kind kind) {
    std::erase_if(marks, [kind](const PMMark& mark) { return mark.kind() == kind; });
}

// The marks that came with the characters, changed only where the person changed what they see.
std::optional<std::vector<PMMark>> marksOf(const QTextCharFormat& format) {
    const auto stored = format.property(marksProperty).value<StoredMarks>().list;
    auto marks = stored.value_or(std::vector<PMMark>{});
    for (const auto kind : toggles) {
        if (hasMark(format, kind) == (find(stored, kind) != nullptr)) continue;
        if (hasMark(format, kind))
            marks.push_back({std::string{nameOf(kind)}, std::nullopt});
        else
            drop(marks, kind);
    }
    const auto colour = textColor(format).toStdString();
    if (colour != colourOf(stored)) {
        drop(marks, Kind::textColor);
        if (!colour.empty()) marks.push_back(pm::textColor(colour));
    }
    if (marks == stored.value_or(std::vector<PMMark>{})) return stored;
    return marks.empty() ? std::nullopt : std::optional{std::move(marks)};
}

Runs runsOf(const QTextBlock& block) {
    Runs runs;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const auto fragment = it.fragment();
        append(runs, {fragment.text(), marksOf(fragment.charFormat())});
    }
    return runs;
}

// The blocks that a document shows: the children of a `doc`; a lone node that is none shows itself.
std::vector<const PMNode*> childrenOf(const PMNode& note) {
    if (note.kind() != PMNode::Kind::doc) return {&note};
    std::vector<const PMNode*> children;
    if (note.content) {
        for (const auto& child : *note.content) children.push_back(&child);
    }
    return children;
}

const PMNode* childOf(const QTextBlock& block, const std::vector<const PMNode*>& children) {
    const auto index = block.blockFormat().property(childProperty);
    const auto place = static_cast<std::size_t>(index.isValid() ? index.toInt() : -1);
    return place < children.size() ? children[place] : nullptr;
}

bool holdsOnlyText(const PMNode& child) {
    return child.kind() != PMNode::Kind::text && child.content &&
           std::ranges::all_of(*child.content, [](const PMNode& node) { return node.kind() == PMNode::Kind::text; });
}

PMNode nodeOf(const Runs& runs, const PMNode* child) {
    std::vector<PMNode> content;
    for (const auto& run : runs) content.push_back(pm::text(run.text.toStdString(), run.marks));
    PMNode node = pm::paragraph({});
    if (child && (child->kind() == PMNode::Kind::paragraph || holdsOnlyText(*child))) node = *child;
    node.content = std::move(content);
    return node;
}

bool isUntouched(const QTextDocument& document, const std::vector<const PMNode*>& children) {
    if (children.empty()) return document.isEmpty() && !document.firstBlock().blockFormat().hasProperty(childProperty);
    if (static_cast<std::size_t>(document.blockCount()) != children.size()) return false;
    auto block = document.firstBlock();
    return std::ranges::all_of(children, [&](const PMNode* child) {
        const auto one = std::exchange(block, block.next());
        return childOf(one, children) == child && runsOf(one) == runsOf(*child);
    });
}

} // namespace

void fillDocument(QTextDocument& document, const PMNode& note, const NoteStyle& style) {
    const bool keepsUndo = document.isUndoRedoEnabled();
    document.setUndoRedoEnabled(false);
    document.clear();
    document.setDefaultFont(hand(style.fontSize));
    QTextCursor cursor{&document};
    QTextBlockFormat plain;
    cursor.setBlockFormat(plain);
    int index = 0;
    for (const auto* child : childrenOf(note)) {
        plain.setProperty(childProperty, index);
        if (index++ == 0)
            cursor.setBlockFormat(plain);
        else
            cursor.insertBlock(plain, QTextCharFormat{});
        for (const auto& run : runsOf(*child)) cursor.insertText(run.text, formatOf(run, style.paper));
    }
    document.setUndoRedoEnabled(keepsUndo);
    document.setModified(false);
}

PMNode documentNode(const QTextDocument& document, const PMNode& original) {
    const auto children = childrenOf(original);
    if (isUntouched(document, children)) return original;
    PMNode note = original.kind() == PMNode::Kind::doc ? original : pm::doc({});
    std::vector<PMNode> content;
    for (auto block = document.firstBlock(); block.isValid(); block = block.next()) {
        const auto runs = runsOf(block);
        const auto* child = childOf(block, children);
        content.push_back(child && child != &original && runs == runsOf(*child) ? *child : nodeOf(runs, child));
    }
    note.content = std::move(content);
    return note;
}

bool hasMark(const QTextCharFormat& format, PMMark::Kind mark) {
    switch (mark) {
    case Kind::bold: return format.fontWeight() > QFont::Medium;
    case Kind::italic: return format.fontItalic();
    case Kind::underline: return format.fontUnderline();
    case Kind::strike: return format.fontStrikeOut();
    case Kind::textColor: return !textColor(format).isEmpty();
    }
    std::unreachable();
}

void setMark(QTextCharFormat& format, PMMark::Kind mark, bool isOn) {
    switch (mark) {
    case Kind::bold: return format.setFontWeight(isOn ? QFont::Bold : QFont::Normal);
    case Kind::italic: return format.setFontItalic(isOn);
    case Kind::underline: return format.setFontUnderline(isOn);
    case Kind::strike: return format.setFontStrikeOut(isOn);
    case Kind::textColor: return;
    }
}

QString textColor(const QTextCharFormat& format) {
    return format.stringProperty(colourProperty);
}

void setTextColor(QTextCharFormat& format, const QString& stored, const PaperColours& paper) {
    format.setProperty(colourProperty, stored);
    format.setForeground(noteInk(stored, paper));
}

} // namespace lumaro
