// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/NoteReading.h"

#include "Lumaro/UI/Text.h"
#include "Widgets/Items/Light.h"
#include "Widgets/Items/NoteLooks.h"
#include "Widgets/Items/NoteText.h"

namespace lumaro {

void NoteReading::fill() {
    const auto item = editor_->itemInSight();
    const auto* const note = item ? item->payload.as<NotePayload>() : nullptr;
    if (note == nullptr) return;
    const InLight light{isDark_ ? Appearance::dark : Appearance::light};
    const auto paper = notePaper(qText(std::string_view{note->paper})).colours;
    layForReading(*document_->textDocument(), note->pm, {.paper = paper, .fontSize = fontSize}, width_);
    ink_ = paper.ink;
    spoken_ = qText(std::string_view{note->pm.plainText()});
    Q_EMIT changed();
}

} // namespace lumaro
