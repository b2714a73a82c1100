// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/NoteComposer.h"

#include "DesignSystem/Fonts.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/Support/EnumNames.h"
#include "Widgets/Items/ItemPainting.h"
#include "Widgets/Items/Light.h"
#include "Widgets/Items/NoteLooks.h"
#include "Widgets/Items/NoteText.h"

#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

std::optional<PMMark::Kind> markNamed(const QString& mark) {
    return fromName<PMMark::Kind>(mark.toStdString());
}

} // namespace

void NoteComposer::setDocument(QQuickTextDocument* document) {
    if (document_ == document) return;
    document_ = document;
    connect(document_->textDocument(), &QTextDocument::contentsChanged, this, &NoteComposer::edited);
    Q_EMIT setUp();
}

std::optional<NotePayload> NoteComposer::note() const {
    const auto& draft = editor_->model().inHand().draft();
    const auto payload = draft ? draft->items().front().payload : Payload{};
    const auto* const held = draft ? payload.as<NotePayload>() : nullptr;
    return held == nullptr ? std::nullopt : std::optional{*held};
}

void NoteComposer::begin() {
    const auto held = note();
    if (!held) return;
    original_ = held->pm;
    paper_ = coloursOf(*held);
    Q_EMIT setUp();
    isFilling_ = true;
    fit(original_);
    const InLight light{isDark_ ? Appearance::dark : Appearance::light};
    fillDocument(*document_->textDocument(), original_, {.paper = paper_, .fontSize = font_.pixelSize() * 1.0});
    isFilling_ = false;
    Q_EMIT formatChanged();
}

PaperColours NoteComposer::coloursOf(const NotePayload& note) const {
    const InLight light{isDark_ ? Appearance::dark : Appearance::light};
    return notePaper(qText(std::string_view{note.paper})).colours;
}

void NoteComposer::setDark(bool isDark) {
    if (std::exchange(isDark_, isDark) == isDark) return;
    if (editor_ != nullptr && document_ != nullptr && !isFilling_) takePaper();
    Q_EMIT setUp();
}

void NoteComposer::takePaper() {
    const auto held = note();
    if (!held || document_ == nullptr) return;
    paper_ = coloursOf(*held);
    Q_EMIT setUp();
    isFilling_ = true;
    const InLight light{isDark_ ? Appearance::dark : Appearance::light};
    // Not a step that people take back: they chose a paper, and typed nothing.
    QTextCursor whole{document_->textDocument()};
    whole.joinPreviousEditBlock();
    for (auto block = document_->textDocument()->firstBlock(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const auto run = it.fragment();
            auto format = run.charFormat();
            const auto stored = textColor(format);
            if (stored.isEmpty()) continue;
            setTextColor(format, stored, paper_);
            whole.setPosition(run.position());
            whole.setPosition(run.position() + run.length(), QTextCursor::KeepAnchor);
            whole.setCharFormat(format);
        }
    }
    whole.endEditBlock();
    isFilling_ = false;
    Q_EMIT formatChanged();
}

QColor NoteComposer::inkOf(const QString& stored) const {
    const InLight light{isDark_ ? Appearance::dark : Appearance::light};
    return noteInk(stored, paper_);
}

void NoteComposer::edited() {
    // A document also signals changes that are of its layout alone.
    if (isFilling_ || editor_ == nullptr || !editor_->isWriting()) return;
    auto text = documentNode(*document_->textDocument(), original_);
    const auto held = note();
    if (!held || held->pm == text) return;
    fit(text);
    static_cast<void>(editor_->model().inHand().changeText(std::move(text)));
    Q_EMIT formatChanged();
}

QRectF NoteComposer::box() {
    return noteTextBox({BoardSpec::noteSize.width, BoardSpec::noteSize.height});
}

void NoteComposer::fit(const PMNode& text) {
    const auto font = handFont(fittedFontSize(text, box().size()));
    if (std::exchange(font_, font) != font) Q_EMIT fontChanged();
}

// Marks.

QTextCursor NoteComposer::cursor() const {
    QTextCursor cursor{document_->textDocument()};
    const int end = document_->textDocument()->characterCount() - 1;
    cursor.setPosition(std::min(selectionStart_, end));
    cursor.setPosition(std::min(selectionEnd_, end), QTextCursor::KeepAnchor);
    return cursor;
}

bool NoteComposer::has(PMMark::Kind mark) const {
    return document_ != nullptr && hasMark(cursor().charFormat(), mark);
}

QString NoteComposer::color() const {
    return document_ == nullptr ? QString{} : textColor(cursor().charFormat());
}

template <class Change>
void NoteComposer::format(Change change) {
    auto where = cursor();
    // With nothing selected the word under the cursor is meant.
    if (!where.hasSelection()) where.select(QTextCursor::WordUnderCursor);
    const int start = where.selectionStart();
    const int end = where.selectionEnd();
    where.beginEditBlock();
    if (where.block().length() <= 1) {
        // On an empty line: what is typed there next.
        auto format = where.blockCharFormat();
        change(format);
        where.setBlockCharFormat(format);
    }
    // Each run keeps what else it is.
    for (int at = start; at < end;) {
        where.setPosition(at);
        // To the end of the character as people count it, which may be several.
        const bool hasMore = where.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
        if (!hasMore) break;
        at = where.position();
        auto format = where.charFormat();
        change(format);
        where.setCharFormat(format);
    }
    where.endEditBlock();
    Q_EMIT formatChanged();
}

void NoteComposer::toggle(const QString& mark) {
    const auto kind = markNamed(mark);
    if (!kind || document_ == nullptr) return;
    const bool isOn = !has(*kind);
    format([&](QTextCharFormat& format) { setMark(format, *kind, isOn); });
}

void NoteComposer::setColor(const QString& color) {
    if (document_ == nullptr) return;
    const InLight light{isDark_ ? Appearance::dark : Appearance::light};
    format([&](QTextCharFormat& format) { setTextColor(format, color, paper_); });
}

} // namespace lumaro
